#include "rules/RuleArchive.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include "support/ZipBytes.h"

namespace brennvar {
namespace {

using test::CrcByHand;
using test::DeflatedEntry;
using test::Put32;
using test::StoredEntry;
using test::ZipBytes;
using test::ZipEntry;

std::string NameOf(ArchiveFault fault) {
    constexpr const char* kNames[] = {"None",          "NotOpened", "Damaged",       "Enciphered",
                                      "UnknownMethod", "TooLarge",  "SameNameTwice", "Empty"};
    return kNames[static_cast<std::size_t>(fault)];
}

// Everything that the reader finds: "name=content" or "name!fault" for each entry, or the fault of the archive.
std::string ReadAll(const std::string& bytes) {
    const ArchiveReader reader(bytes);
    if (reader.Fault() != ArchiveFault::None) return "!" + NameOf(reader.Fault());
    std::string found;
    for (std::size_t i = 0; i < reader.Count(); ++i) {
        const ArchiveReader::Entry& entry = reader.Entries()[i];
        const auto content = reader.Extract(i);
        const std::string what = content                             ? '=' + *content
                                 : entry.fault != ArchiveFault::None ? '!' + NameOf(entry.fault)
                                                                     : std::string("!Broken");
        found.append(found.empty() ? "" : " ").append(entry.name).append(what);
    }
    return found;
}

// Raw deflate, as well as it goes.
std::string Deflate(const std::string& content) {
    z_stream stream{};
    (void)deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    std::string packed(deflateBound(&stream, static_cast<uLong>(content.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    (void)deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    (void)deflateEnd(&stream);
    return packed;
}

ZipEntry Bomb(const std::string& name, const std::string& content, const std::string& packed) {
    return {.name = name,
            .packed = packed,
            .method = 8,
            .crc = static_cast<std::uint32_t>(
                crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size()))),
            .size = static_cast<std::uint32_t>(content.size())};
}

TEST(RuleArchiveTest, ReadsWhatOtherProgramsWrite) {
    EXPECT_EQ(ReadAll(ZipBytes({StoredEntry("rules.conf", "abc"), DeflatedEntry("b", "defg")})),
              "rules.conf=abc b=defg");
    EXPECT_EQ(ReadAll(ZipBytes({StoredEntry("empty", ""), StoredEntry("sub/", "")})), "empty= sub/=");
    EXPECT_EQ(ReadAll(ZipBytes({StoredEntry("rules.conf", "abc")}, {.isZip64 = true})), "rules.conf=abc");
    // Comments, also one that looks like the end of an archive.
    const std::string plain = ZipBytes({StoredEntry("a", "b")}, {.comment = "hello"});
    EXPECT_EQ(ReadAll(plain), "a=b");
    EXPECT_EQ(ArchiveReader(plain).Comment(), "hello");
    std::string signature;
    Put32(signature, 0x06054B50);
    EXPECT_EQ(ReadAll(ZipBytes({StoredEntry("a", "b")}, {.comment = "x" + signature + std::string(30, 'y')})),
              "a=b");
}

TEST(RuleArchiveTest, RefusesWhatContradictsItselfOrCannotBeUnpacked) {
    const auto with = [](ZipEntry entry, auto change) {
        change(entry);
        return ZipBytes({StoredEntry("first", "1"), entry});
    };
    const ZipEntry good = DeflatedEntry("e", "content");
    struct Row {
        const char* what;
        std::string bytes;
        std::string found;
    };
    const Row rows[] = {
        {"nothing", "", "!NotOpened"},
        {"no archive", std::string(1000, 'x'), "!NotOpened"},
        {"an end alone", ZipBytes({}), ""},
        {"another checksum", with(good, [](ZipEntry& e) { e.crc ^= 1; }), "first=1 e!Broken"},
        {"another size", with(good, [](ZipEntry& e) { e.size = 6; }), "first=1 e!Broken"},
        {"another name in the local header", with(good, [](ZipEntry& e) { e.localName = "evil"; }), "!Damaged"},
        {"a name in the directory alone", with(good, [](ZipEntry& e) { e.hasLocal = false; }), "!Damaged"},
        {"enciphered", with(good, [](ZipEntry& e) { e.flags = 1; }), "first=1 e!Enciphered"},
        {"LZMA", with(good, [](ZipEntry& e) { e.method = 14; }), "first=1 e!UnknownMethod"},
        {"bad deflate", with(good, [](ZipEntry& e) { e.packed[0] = 7; }), "first=1 e!Broken"},
        {"more in the directory than there is", ZipBytes({good}, {.count = 3}), "!Damaged"},
        {"a name cut short", ZipBytes({good}).substr(0, 70), "!Damaged"},
    };
    for (const Row& row : rows) EXPECT_EQ(ReadAll(row.bytes), row.found) << row.what;

    // Entries that share their bytes: each fits, but together they are more than there is.
    const ZipEntry shared = StoredEntry("s", std::string(100, 's'));
    ZipEntry second = shared;
    second.hasLocal = false;
    second.offset = 0;
    EXPECT_EQ(ReadAll(ZipBytes({shared, second, second})), "!Damaged");
    for (std::size_t length = 0; length < ZipBytes({good}).size(); ++length) {
        EXPECT_EQ(ReadAll(ZipBytes({good}).substr(0, length)).front(), '!') << length;
    }
}

TEST(RuleArchiveTest, RefusesBombs) {
    const std::string zeros(2U << 20, '\0');
    const std::string packed = Deflate(zeros);
    EXPECT_EQ(ReadAll(ZipBytes({Bomb("bomb", zeros, packed)})), "bomb!TooLarge") << "about 1000:1";
    const std::string fewer = zeros.substr(0, 1U << 20);
    const std::string bytes = ZipBytes({Bomb("a", fewer, Deflate(fewer))});
    EXPECT_EQ(ArchiveReader(bytes).Extract(0), fewer) << "not yet a matter of the ratio";
    // 200:1 to the byte.
    ZipEntry entry = Bomb("edge", zeros, packed);
    entry.packedSize = static_cast<std::uint32_t>((zeros.size() + 199) / 200);
    entry.packed.resize(*entry.packedSize);
    EXPECT_EQ(ArchiveReader(ZipBytes({entry})).Entries()[0].fault, ArchiveFault::None);
    entry.packed.pop_back();
    --*entry.packedSize;
    EXPECT_EQ(ArchiveReader(ZipBytes({entry})).Entries()[0].fault, ArchiveFault::TooLarge);
    // More than it says, and far more than there may be.
    entry = Bomb("lie", zeros, packed);
    entry.size = 100;
    EXPECT_EQ(ReadAll(ZipBytes({entry})), "lie!Broken");
    entry.size = (64U << 20) + 1;
    EXPECT_EQ(ReadAll(ZipBytes({entry})), "lie!TooLarge");

    std::vector<ZipEntry> many;
    for (int i = 0; i < 65'536; ++i) many.push_back(StoredEntry(std::to_string(i), ""));
    EXPECT_EQ(ReadAll(ZipBytes(many, {.isZip64 = true})), "!TooLarge");
    many.resize(1000);
    EXPECT_EQ(ArchiveReader(ZipBytes(many)).Count(), 1000U);
    many.push_back(StoredEntry("one more", ""));
    EXPECT_EQ(ReadAll(ZipBytes(many)), "!TooLarge");
}

TEST(RuleArchiveTest, WritesAnArchiveThatHasOneEntryAndWhatItNeeds) {
    ArchiveWriter writer;
    const std::string content = "rules rules rules rules rules rules rules";
    ASSERT_TRUE(writer.AddFile("rules.conf", content, Packing::Deflated));
    EXPECT_FALSE(writer.AddFile("rules.conf", "other", Packing::Stored)) << "the name is taken";
    ASSERT_TRUE(writer.SetComment("of a test"));
    const auto bytes = writer.Close();
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(bytes->substr(8, 2), std::string("\x08\0", 2)) << "deflated";
    EXPECT_EQ(ArchiveReader(*bytes).Comment(), "of a test");
    EXPECT_EQ(ReadAll(*bytes), "rules.conf=" + content);

    ArchiveWriter stored;
    ASSERT_TRUE(stored.AddFile("a", "bc", Packing::Stored));
    EXPECT_NE(stored.Close().value_or("").find("abc"), std::string::npos);
    EXPECT_EQ(ArchiveWriter().Close(), std::nullopt) << "there is no archive without entries";
}

}  // namespace
}  // namespace brennvar
