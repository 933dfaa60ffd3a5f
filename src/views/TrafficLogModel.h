// The Traffic Log page: what the firewall allowed, denied and asked on one day, or the packets that it kept. All of
// a log is listed by a worker (ListLog), newest events first; what the service appends comes to the top once a
// second while the page is shown; entries in sight are read on the reads queue. The filter, the search and the
// order of the list are wishes for the next listing, which begins as soon as the last one has ended.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "base/Refreshed.h"
#include "base/WhileAlive.h"
#include "config/CodePage.h"
#include "config/Language.h"
#include "dialogs/MailWish.h"
#include "lists/ListModel.h"
#include "logs/LogListing.h"
#include "logs/Lookups.h"
#include "ui/WorkerThread.h"
#include "views/LogRowCache.h"
#include "views/LogRows.h"
#include "views/LogWriting.h"

namespace brennvar {

class TrafficLogModel final : public ListModel {
public:
    static constexpr std::chrono::milliseconds kJobPeriod{30};       // between two looks at what a worker has done
    static constexpr std::chrono::milliseconds kFollowPeriod{1000};  // at what the service has appended
    static constexpr std::size_t kMostCopied = 100'000;              // rows, some 10 MB of text

    enum Choice { kLogChoice = 200, kDayChoice, kFilterChoice };
    enum Action { kDetails = 100, kShowRule, kOpenFolder, kExport, kDeleteLogs, kMail };

    // All are borrowed, the workers with whoever stops them when they have finished.
    struct Parts {
        const Language& language;
        const Clock& clock;
        TaskQueue& reads;
        CWorkerThread& listing;
        CWorkerThread& writing;
        LogLookups& lookups;
        std::string dataFolder;
        CodePage page;  // of the language
        MailForms& mail;
        std::string temporaryFolder;  // for files that are sent by mail; ends in a separator
    };
    explicit TrafficLogModel(const Parts& parts);
    ~TrafficLogModel() override;

    [[nodiscard]] std::string Name() const override { return "TrafficLog"; }
    [[nodiscard]] std::vector<ListColumn> Columns() const override;
    [[nodiscard]] std::string EmptyText() const override;
    [[nodiscard]] std::optional<std::string> Summary() const override;
    [[nodiscard]] int RowCount() const override { return m_rows.Count(); }
    [[nodiscard]] int AllRowCount() const override;
    [[nodiscard]] ListCell Cell(int row, int column) const override;
    [[nodiscard]] std::string CellTip(int row, int column) const override;
    [[nodiscard]] std::string Key(int row) const override;
    [[nodiscard]] int FindRow(const std::string& key) const override;
    [[nodiscard]] std::optional<std::string> Program(int row) const override;
    [[nodiscard]] bool ArrangesItself() const override { return true; }
    void ArrangeBy(const RowOrder& order) override;
    [[nodiscard]] std::vector<ListChoice> Choices() const override;
    void Choose(int id, int item) override;
    [[nodiscard]] std::optional<ListProgress> Progress() const override;
    void StopProgress() override;
    [[nodiscard]] std::optional<ListQuestion> LeavingQuestion() const override;
    [[nodiscard]] std::span<const ListAction> Actions() const override;
    [[nodiscard]] bool CanDo(int action, int row) const override;
    void Do(int action, std::span<const int> rows) override;
    bool Copy(const RowRanges& rows) override;

    void Read(ReadReason reason) override;
    void OnHidden() override;
    void OnWake() override;

private:
    // The service has been told to delete logs: it is given the time to do so, then all is read anew.
    void OnLogsDeleted();
    enum class Pass : std::uint8_t { None, Waits, Runs };
    struct FollowRequest {
        LogPlace place;
        LogWish wish;
        LogExtent extent;
        std::uint64_t pass = 0;
    };
    struct Listed {
        LogExtent extent;
        LogWish wish;
        bool wasStopped = false;
    };
    // Nothing: the log is to be listed anew.
    using Followed = std::optional<LogNews>;

    // What is listed (TrafficLogModel.cpp)
    void OpenLog();
    void ReadAnew();
    void Abandon();
    void List();
    void BeginPass();
    void TakeNews();
    void KeepList();
    void TakeRows(LogNews& news);
    void Follow();
    void OnFollowed(std::optional<Followed> followed, const FollowRequest& request);
    void OnDays(std::vector<LocalDate> days, LogKind kind);
    // True: it is listed now.
    bool FollowToday();
    void ScheduleWake();
    [[nodiscard]] bool MayFollow() const;
    // Null, and it will be read, when it is not there yet.
    [[nodiscard]] const LogRow* RowAt(int row) const;

    // What can be done with it (TrafficLogActions.cpp)
    void ShowDetails(std::uint32_t number);
    void AskForExport();
    // Writes the rows, or all without any, into a file of its own, which the form then sends.
    void Mail(std::span<const int> rows);
    [[nodiscard]] LogSelection SelectionOf(std::vector<std::uint32_t> numbers) const;
    [[nodiscard]] bool IsExporting() const { return m_writing.IsBusy() && !m_writing.IsCopy(); }
    // Says so to the user when it is.
    bool TellExporting();
    void TellFinished(const LogWriting::Finished& finished);
    [[nodiscard]] LogSelection Selection() const;
    // Of the rows; none while the first listing of the log is under way.
    [[nodiscard]] std::optional<LogExtent> Extent() const;

    [[nodiscard]] std::string KindName() const;
    // "Traffic 2026-03-09"
    [[nodiscard]] std::string LogName() const;

    const Parts m_parts;
    const std::shared_ptr<const LogTexts> m_texts;

    // What the user has chosen
    LogKind m_kind = LogKind::Traffic;
    LocalDate m_day;
    bool m_followsToday = true;  // the day was chosen as today: tomorrow it is tomorrow's
    LogWish m_wish;
    std::vector<LocalDate> m_days;  // that can be chosen, newest first

    // What is listed
    LogRows m_rows;
    LogTally m_tally;
    std::optional<LogExtent> m_extent;  // none until all has been listed
    bool m_wasStopped = false;          // before all was
    LogWish m_listedWish;               // the rows are those of this one
    std::optional<Listed> m_kept;       // what the rows are, while a listing that will replace them is under way
    Pass m_pass = Pass::None;
    std::uint64_t m_passNumber = 0;
    std::uint64_t m_done = 0;
    std::uint64_t m_total = 0;
    std::shared_ptr<LogNewsBox> m_box;

    bool m_isOtherFile = false;  // the one that is listed now: nothing of it is known
    bool m_isShown = false;
    std::chrono::milliseconds m_followAt{0};                 // of Clock::Elapsed
    std::optional<std::chrono::milliseconds> m_settledAt{};  // logs are being deleted until then
    mutable LogRowCache m_cache;
    LogWriting m_writing;
    std::string m_mailPath;  // of the file that is written for a mail; empty: of none
    std::string m_mailName;  // of the log in it
    Refreshed<std::vector<LocalDate>, LogKind> m_dayReading;
    Refreshed<Followed, FollowRequest> m_following;
    WhileAlive m_alive;
};

}  // namespace brennvar
