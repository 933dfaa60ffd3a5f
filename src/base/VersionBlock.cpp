#include "base/VersionBlock.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace brennvar {
namespace {

constexpr std::size_t kNodeHeaderSize = 2 + 2 + 2;  // node size, value size, kind of value
constexpr std::uint16_t kTextValue = 1;             // the value size then counts UTF-16 units

struct Node {
    std::u16string key;
    std::size_t value = 0;      // offset in the block
    std::size_t valueSize = 0;  // bytes; as the node claims, not yet held against its end
    std::size_t end = 0;        // offset behind the node, never beyond its parent's
};

std::size_t AlignTo4(std::size_t offset) {
    return (offset + 3) & ~std::size_t{3};
}

char16_t UnitAt(std::span<const std::byte> block, std::size_t offset) {
    char16_t unit = 0;
    std::memcpy(&unit, block.data() + offset, sizeof unit);
    return unit;
}

// The units from offset up to the first zero or the last whole unit before end.
std::u16string TextAt(std::span<const std::byte> block, std::size_t offset, std::size_t end) {
    std::u16string text;
    for (; offset + 2 <= end; offset += 2) {
        const char16_t unit = UnitAt(block, offset);
        if (unit == 0) break;
        text += unit;
    }
    return text;
}

// The node at offset; nothing when it does not fit in front of limit.
std::optional<Node> ReadNode(std::span<const std::byte> block, std::size_t offset, std::size_t limit) {
    if (offset + kNodeHeaderSize > limit) return std::nullopt;
    const std::size_t size = UnitAt(block, offset);
    // The smallest node is its header and the zero of an empty key. Anything less would not move a search on.
    if (size < kNodeHeaderSize + 2 || offset + size > limit) return std::nullopt;
    Node node;
    node.end = offset + size;
    const std::size_t unitSize = UnitAt(block, offset + 4) == kTextValue ? 2 : 1;
    node.valueSize = UnitAt(block, offset + 2) * unitSize;
    node.key = TextAt(block, offset + kNodeHeaderSize, node.end);
    node.value = AlignTo4(offset + kNodeHeaderSize + 2 * (node.key.size() + 1));
    return node;
}

bool EqualIgnoringCase(std::u16string_view left, std::u16string_view right) {
    const auto lower = [](char16_t unit) { return unit >= u'A' && unit <= u'Z' ? unit + (u'a' - u'A') : +unit; };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [&](char16_t a, char16_t b) { return lower(a) == lower(b); });
}

std::optional<Node> FindChild(std::span<const std::byte> block, const Node& parent, std::u16string_view key) {
    std::size_t offset = AlignTo4(parent.value + parent.valueSize);
    while (auto child = ReadNode(block, offset, parent.end)) {
        if (EqualIgnoringCase(child->key, key)) return child;
        offset = AlignTo4(child->end);
    }
    return std::nullopt;
}

// The name of the string table for a language and code page: both as four hexadecimal digits.
std::u16string TableName(char16_t language, char16_t codePage) {
    std::u16string name;
    for (const char16_t number : {language, codePage}) {
        for (int shift = 12; shift >= 0; shift -= 4) name += u"0123456789abcdef"[(number >> shift) & 0xF];
    }
    return name;
}

std::optional<std::u16string> FirstTableName(std::span<const std::byte> block, const Node& root) {
    const auto files = FindChild(block, root, u"VarFileInfo");
    if (!files) return std::nullopt;
    const auto pairs = FindChild(block, *files, u"Translation");
    if (!pairs || pairs->valueSize < 4 || pairs->value + 4 > pairs->end) return std::nullopt;
    return TableName(UnitAt(block, pairs->value), UnitAt(block, pairs->value + 2));
}

}  // namespace

std::u16string FindVersionText(std::span<const std::byte> block, std::u16string_view key) {
    const auto root = ReadNode(block, 0, block.size());
    if (!root) return {};
    const auto tableName = FirstTableName(block, *root);
    if (!tableName) return {};
    const auto tables = FindChild(block, *root, u"StringFileInfo");
    if (!tables) return {};
    const auto table = FindChild(block, *tables, *tableName);
    if (!table) return {};
    const auto text = FindChild(block, *table, key);
    // Resource compilers disagree on the unit of a text's size: the zero and the node's end bound it instead.
    if (!text || text->valueSize == 0) return {};
    return TextAt(block, text->value, text->end);
}

}  // namespace brennvar
