#include "logs/LogExport.h"

#include <string_view>

namespace brennvar {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kPieceSize = 0x40000;  // written at a time

// Puts cells into lines of one format.
class LineWriter {
public:
    LineWriter(LogFormat format, CodePage page) : m_format(format), m_page(page) {}

    std::string text;

    // A cell that was put together here and needs nothing of what follows.
    [[nodiscard]] std::string& BeginPlain() {
        Separate();
        return text;
    }
    void Add(std::string_view cell) {
        Separate();
        if (m_format == LogFormat::Text) {
            const std::size_t start = text.size();
            AppendUtf8(text, cell, m_page);
            for (std::size_t i = start; i < text.size(); ++i) {
                if (static_cast<unsigned char>(text[i]) < ' ') text[i] = ' ';
            }
            return;
        }
        if (cell.find_first_of("\",\r\n") == std::string_view::npos && !CouldBeFormula(cell)) {
            return AppendUtf8(text, cell, m_page);
        }
        text += '"';
        // A table program must not compute what a program or a rule was named by somebody else.
        if (CouldBeFormula(cell)) text += '\'';
        for (std::size_t quote; (quote = cell.find('"')) != std::string_view::npos; cell.remove_prefix(quote + 1)) {
            AppendUtf8(text, cell.substr(0, quote), m_page);
            text += "\"\"";
        }
        AppendUtf8(text, cell, m_page);
        text += '"';
    }
    void EndLine() {
        text += kLineEnd;
        m_isFirst = true;
    }

private:
    static bool CouldBeFormula(std::string_view cell) {
        return !cell.empty() && std::string_view("=+-@").find(cell.front()) != std::string_view::npos;
    }
    void Separate() {
        if (!m_isFirst) text += m_format == LogFormat::Csv ? ',' : '\t';
        m_isFirst = false;
    }

    const LogFormat m_format;
    const CodePage m_page;
    bool m_isFirst = true;
};

void AddHeading(LineWriter& lines, const LogTexts& texts) {
    for (const std::string& column : texts.columns) lines.Add(column);
    lines.Add(texts.path);
    lines.EndLine();
}

void AddEntry(LineWriter& lines, const LogEntry& entry, const LogTexts& texts) {
    AppendTime(lines.BeginPlain(), entry);
    lines.Add(entry.isPacket ? std::string_view() : texts.actions[static_cast<std::size_t>(entry.action)]);
    lines.BeginPlain() += NameOf(entry.protocol);
    if (entry.hasAddresses) {
        AppendAddresses(lines.BeginPlain(), entry);
    } else {
        lines.Add(entry.shortText);
    }
    lines.Add(ProgramOf(entry));
    if (entry.isPacket) {
        std::string& text = lines.BeginPlain();
        AppendNumber(text, entry.packetSize);  // a number, for whoever adds them up
    } else {
        lines.Add(entry.shortText);
    }
    lines.Add(entry.path);
    lines.EndLine();
}

// Goes through the entries until it is stopped or add returns false.
template <class AddOne>
void ForEach(const LogSelection& selection, const StopSignal& stop, LogExportState& state, AddOne add) {
    const auto reader = LogReader::Open(selection.place);
    for (std::size_t i = 0; i < selection.count; ++i) {
        if (stop.Requested()) {
            state.wasStopped = true;
            return;
        }
        const LogEntry* const entry = reader ? reader->Read(selection.numberAt(i)) : nullptr;
        if (entry == nullptr) {
            ++state.missing;
        } else if (!add(*entry)) {
            return;
        }
        state.done.store(i + 1, std::memory_order_relaxed);
    }
}

}  // namespace

void ExportLog(const LogSelection& selection, const std::string& path, LogFormat format, const LogTexts& texts,
               CodePage page, const StopSignal& stop, LogExportState& state) {
    try {
        NewFile file(path);
        LineWriter lines(format, page);
        lines.text.reserve(kPieceSize + 0x1000);
        lines.text += kByteOrderMark;
        AddHeading(lines, texts);
        ForEach(selection, stop, state, [&](const LogEntry& entry) {
            AddEntry(lines, entry, texts);
            if (lines.text.size() < kPieceSize) return true;
            file.Write(lines.text);
            lines.text.clear();
            return file.Result() == WriteResult::Written;
        });
        file.Write(lines.text);
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
        ForEach(selection, stop, state, [&](const LogEntry& entry) {
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
