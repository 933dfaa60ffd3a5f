#include "logs/LogExport.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <utility>

#include "base/DisplayName.h"
#include "base/Endpoint.h"
#include "logs/PieceWriter.h"

namespace brennvar {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kPieceSize = 0x40000;  // written at a time

// Times a byte: eight of it.
constexpr std::uint64_t kEachByte = 0x0101010101010101;

// Whether one of eight bytes is a control character, not ASCII, a quote or a comma. Each term has the highest bit
// of a byte set when that byte is such a one, and of no byte when none is: a borrow starts only at a byte that is.
constexpr bool HasSpecial(std::uint64_t bytes) {
    const std::uint64_t quotes = bytes ^ kEachByte * '"';
    const std::uint64_t commas = bytes ^ kEachByte * ',';
    const std::uint64_t found = ((bytes - kEachByte * ' ') & ~bytes) | bytes | ((quotes - kEachByte) & ~quotes) |
                                ((commas - kEachByte) & ~commas);
    return (found & kEachByte * 0x80) != 0;
}

// Whether the text means the same in every code page and needs no quotes. It is asked of every text of every entry.
bool IsPlain(std::string_view text) {
    const auto load = []<class Word>(const char* at, Word word) {
        std::memcpy(&word, at, sizeof word);
        return word;
    };
    const std::size_t size = text.size();
    const char* const first = text.data();
    if (size >= sizeof(std::uint64_t)) {
        const char* const last = first + size - sizeof(std::uint64_t);
        for (const char* at = first; at < last; at += sizeof(std::uint64_t)) {
            if (HasSpecial(load(at, std::uint64_t{}))) return false;
        }
        return !HasSpecial(load(last, std::uint64_t{}));  // with some bytes again
    }
    if (size >= sizeof(std::uint32_t)) {
        const std::uint64_t end = load(first + size - sizeof(std::uint32_t), std::uint32_t{});
        return !HasSpecial(end << 32 | load(first, std::uint32_t{}));
    }
    return std::ranges::none_of(text, [](char c) { return HasSpecial(kEachByte * static_cast<unsigned char>(c)); });
}

// A table program would compute it.
bool CouldBeFormula(std::string_view text) {
    if (text.empty()) return false;
    const char c = text.front();
    return c == '=' || c == '+' || c == '-' || c == '@';
}

bool HasDelimiter(std::string_view text) {
    return std::ranges::any_of(text, [](char c) { return c == '"' || c == ',' || c == '\r' || c == '\n'; });
}

// The lines of a file, put together in one piece after another.
class Lines {
public:
    // The texts are borrowed.
    Lines(LogFormat format, CodePage page, const LogTexts& texts)
        : m_format(format), m_separator(format == LogFormat::Csv ? ',' : '\t'), m_texts(texts) {
        for (std::size_t i = 0; i < m_signs.size(); ++i) {
            std::string sign;
            const auto c = static_cast<char>(i);
            AppendUtf8(sign, {&c, 1}, page);
            if (format == LogFormat::Text) {
                BlankControls(sign);
            } else if (c == '"') {
                sign += c;
            }
            std::copy(sign.begin(), sign.end(), m_signs[i].bytes);
            m_signs[i].size = static_cast<std::uint8_t>(sign.size());
        }
        std::size_t action = 0;
        for (const std::string& text : texts.actions) action = std::max(action, text.size());
        std::size_t heading = texts.path.size();
        for (const std::string& column : texts.columns) heading += column.size();
        // A line has path, program, the short text twice, and cells that do not grow.
        const std::size_t line =
            action + 2 * (sizeof(TrafficLogRecord::path) + sizeof(TrafficLogRecord::shortText));
        m_room = kPieceSize + kMostGrowth * std::max(heading, line) + kAddressesRoom + 0x80;
        Restart();
        Put(kByteOrderMark);
        for (const std::string& column : texts.columns) {
            PutCell(column);
            *m_end++ = m_separator;
        }
        PutCell(texts.path);
        Put(kLineEnd);
    }

    [[nodiscard]] bool IsFull() const { return Size() >= kPieceSize; }
    // False: the file has failed.
    [[nodiscard]] bool Send(PieceWriter& writer) {
        m_piece.size = Size();
        if (!writer.Put(m_piece)) return false;
        Restart();
        return true;
    }

    void Add(const LogEntry& entry) {
        m_end = PutTime(m_end, entry);
        *m_end++ = m_separator;
        if (!entry.isPacket) PutCell(m_texts.actions[static_cast<std::size_t>(entry.action)]);
        *m_end++ = m_separator;
        Put(NameOf(entry.protocol));
        *m_end++ = m_separator;
        if (entry.hasAddresses) {
            m_end = PutAddresses(m_end, entry);
        } else {
            PutCell(entry.shortText);
        }
        *m_end++ = m_separator;
        const bool isPlainPath = IsPlain(entry.path);
        PutCell(ProgramOf(entry), isPlainPath);
        *m_end++ = m_separator;
        if (entry.isPacket) {
            m_end = PutNumber(m_end, entry.packetSize);  // without a word, for whoever adds them up
        } else {
            PutCell(entry.shortText);
        }
        *m_end++ = m_separator;
        PutCell(entry.path, isPlainPath);
        Put(kLineEnd);
    }

private:
    static constexpr std::size_t kMostGrowth = 3;  // bytes of UTF-8 that one character becomes
    struct Sign {
        char bytes[kMostGrowth];
        std::uint8_t size;
    };

    [[nodiscard]] std::size_t Size() const { return static_cast<std::size_t>(m_end - m_piece.bytes.data()); }
    void Restart() {
        m_piece.bytes.resize(m_room);
        m_end = m_piece.bytes.data();
    }
    void Put(std::string_view text) {
        std::memcpy(m_end, text.data(), text.size());
        m_end += text.size();
    }
    void PutCell(std::string_view text) { PutCell(text, IsPlain(text)); }
    void PutCell(std::string_view text, bool isPlain) {
        // What a program or a rule was named by somebody else must not be computed where the file is opened.
        const bool isFormula = m_format == LogFormat::Csv && CouldBeFormula(text);
        if (isPlain && !isFormula) return Put(text);
        const bool isQuoted = isFormula || (m_format == LogFormat::Csv && HasDelimiter(text));
        if (isQuoted) *m_end++ = '"';
        if (isFormula) *m_end++ = '\'';
        for (const char c : text) {
            const Sign& sign = m_signs[static_cast<unsigned char>(c)];
            std::memcpy(m_end, sign.bytes, sizeof sign.bytes);  // what is too much is written over
            m_end += sign.size;
        }
        if (isQuoted) *m_end++ = '"';
    }

    const LogFormat m_format;
    const char m_separator;
    const LogTexts& m_texts;
    std::array<Sign, 256> m_signs{};  // what becomes of each byte
    std::size_t m_room = 0;           // of a piece and one line more
    PieceWriter::Piece m_piece;
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
        bool isThere = false;
        {
            PieceWriter writer(file);
            bool goesOn = true;
            isThere = ForEach(selection, stop, state, [&](const LogEntry& entry) {
                lines.Add(entry);
                goesOn = !lines.IsFull() || lines.Send(writer);
                return goesOn;
            });
            if (isThere && goesOn && !state.wasStopped && lines.Send(writer)) writer.Finish();
        }
        if (!isThere) {
            state.result = WriteResult::Failed;
            state.isOver = true;
            return;
        }
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
