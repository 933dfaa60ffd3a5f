#include "logs/LogExport.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <utility>

#include "base/DisplayName.h"

namespace brennvar {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kPieceSize = 0x40000;  // written at a time

constexpr std::size_t kMostGrowth = 3;  // bytes of UTF-8 that one character becomes

// Whether the text means the same in every code page and needs no quotes. Branches only once: it is asked of every
// text of every entry.
bool IsPlain(std::string_view text) {
    unsigned special = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        special |= static_cast<unsigned>(byte < ' ') | static_cast<unsigned>(byte >= 0x80) |
                   static_cast<unsigned>(byte == '"') | static_cast<unsigned>(byte == ',');
    }
    return special == 0;
}

// A table program would compute it.
bool CouldBeFormula(std::string_view text) {
    return !text.empty() && std::string_view("=+-@").find(text.front()) != std::string_view::npos;
}

// A text of any characters as a cell of the format.
std::string CellOf(std::string_view text, LogFormat format, CodePage page) {
    std::string cell;
    AppendUtf8(cell, text, page);
    if (format == LogFormat::Text) {
        BlankControls(cell);
        return cell;
    }
    // What a program or a rule was named by somebody else must not be computed where the file is opened.
    const bool isFormula = CouldBeFormula(text);
    if (!isFormula && cell.find_first_of("\",\r\n") == std::string::npos) return cell;
    std::string quoted = isFormula ? "\"'" : "\"";
    for (const char c : cell) {
        quoted += c;
        if (c == '"') quoted += c;
    }
    return quoted + '"';
}

// The lines of a file, put together in one buffer.
class Lines {
public:
    Lines(LogFormat format, CodePage page, const LogTexts& texts)
        : m_format(format), m_page(page), m_separator(format == LogFormat::Csv ? ',' : '\t') {
        std::size_t longest = 0;
        for (std::size_t i = 0; i < kLogActionCount; ++i) {
            m_actions[i] = CellOf(texts.actions[i], format, page);
            longest = std::max(longest, m_actions[i].size());
        }
        // Path, program and the short text twice, each character doubled or grown, in quotes.
        m_longest = longest + kAddressesRoom + kMostGrowth * 2 * (sizeof(TrafficLogRecord::path) + 0x40) + 0x40;
        std::string heading(kByteOrderMark);
        for (const std::string& column : texts.columns) heading += CellOf(column, format, page) + m_separator;
        heading += CellOf(texts.path, format, page);
        heading += kLineEnd;
        m_buffer.resize(kPieceSize + heading.size() + m_longest);
        m_end = std::copy(heading.begin(), heading.end(), m_buffer.data());
    }

    [[nodiscard]] std::string_view Text() const {
        return {m_buffer.data(), static_cast<std::size_t>(m_end - m_buffer.data())};
    }
    [[nodiscard]] bool IsFull() const { return Text().size() >= kPieceSize; }
    void Clear() { m_end = m_buffer.data(); }

    void Add(const LogEntry& entry) {
        m_end = PutTime(m_end, entry);
        *m_end++ = m_separator;
        if (!entry.isPacket) Put(m_actions[static_cast<std::size_t>(entry.action)]);
        *m_end++ = m_separator;
        Put(NameOf(entry.protocol));
        *m_end++ = m_separator;
        if (entry.hasAddresses) {
            m_end = PutAddresses(m_end, entry);
        } else {
            PutCell(entry.shortText);
        }
        *m_end++ = m_separator;
        const std::string_view program = ProgramOf(entry);
        const bool isPlainPath = IsPlain(entry.path);
        PutCell(program, isPlainPath);
        *m_end++ = m_separator;
        if (entry.isPacket) {
            Put(std::to_string(entry.packetSize));  // a number, for whoever adds them up
        } else {
            PutCell(entry.shortText);
        }
        *m_end++ = m_separator;
        PutCell(entry.path, isPlainPath);
        Put(kLineEnd);
    }

private:
    void Put(std::string_view text) {
        std::memcpy(m_end, text.data(), text.size());
        m_end += text.size();
    }
    void PutCell(std::string_view text) { PutCell(text, IsPlain(text)); }
    void PutCell(std::string_view text, bool isPlain) {
        if (isPlain && (m_format == LogFormat::Text || !CouldBeFormula(text))) return Put(text);
        Put(CellOf(text, m_format, m_page));
    }

    const LogFormat m_format;
    const CodePage m_page;
    const char m_separator;
    std::array<std::string, kLogActionCount> m_actions;
    std::size_t m_longest = 0;  // line
    std::vector<char> m_buffer;
    char* m_end = nullptr;
};

// Goes through the entries until it is stopped or add returns false. False: the log is another one now, and all of
// them are missing.
template <class AddOne>
bool ForEach(const LogSelection& selection, const StopSignal& stop, LogExportState& state, AddOne add) {
    const auto reader = LogReader::Open(selection.place);
    if (selection.extent && (!reader || !IsSameLog(reader->File(), selection.place, *selection.extent))) {
        state.missing = selection.count;
        return false;
    }
    for (std::size_t i = 0; i < selection.count; ++i) {
        if (stop.Requested()) {
            state.wasStopped = true;
            return true;
        }
        const LogEntry* const entry = reader ? reader->Read(selection.numberAt(i)) : nullptr;
        if (entry == nullptr) {
            ++state.missing;
        } else if (!add(*entry)) {
            return true;
        }
        state.done.store(i + 1, std::memory_order_relaxed);
    }
    return true;
}

}  // namespace

void ExportLog(const LogSelection& selection, const std::string& path, LogFormat format, const LogTexts& texts,
               CodePage page, const StopSignal& stop, LogExportState& state) {
    try {
        NewFile file(path);
        Lines lines(format, page, texts);
        const bool isThere = ForEach(selection, stop, state, [&](const LogEntry& entry) {
            lines.Add(entry);
            if (!lines.IsFull()) return true;
            file.Write(lines.Text());
            lines.Clear();
            return file.Result() == WriteResult::Written;
        });
        if (!isThere) {
            state.result = WriteResult::Failed;
            state.isOver = true;
            return;
        }
        file.Write(lines.Text());
        state.result = state.wasStopped ? file.Result() : file.PutInPlace();
    } catch (...) {  // no memory: nothing was put in place
        state.result = WriteResult::Failed;
    }
    state.isOver = true;
}

void CopyLog(const LogSelection& selection, const LogTexts& texts, const StopSignal& stop, LogExportState& state) {
    try {
        std::string text;
        std::string cell;
        (void)ForEach(selection, stop, state, [&](const LogEntry& entry) {
            for (std::size_t i = 0; i < kLogColumnCount; ++i) {
                if (i > 0) text += '\t';
                cell.clear();
                AppendCell(cell, static_cast<LogColumn>(i), entry, texts);
                BlankControls(cell);
                text += cell;
            }
            text += kLineEnd;
            return true;
        });
        state.text = std::move(text);
    } catch (...) {  // no memory: nothing is copied
        state.wasStopped = true;
    }
    state.isOver = true;
}

}  // namespace brennvar
