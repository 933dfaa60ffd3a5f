#include "views/TrafficLogModel.h"

#include <algorithm>
#include <charconv>
#include <tuple>
#include <utility>

#include "base/DisplayName.h"
#include "commands/Commander.h"
#include "lists/RowOrder.h"

namespace brennvar {
namespace {

// Read with a row that is painted: about what is in sight.
constexpr int kRowsBefore = 16;
constexpr int kRowsBehind = 64;

}  // namespace

TrafficLogModel::TrafficLogModel(const Parts& parts)
    : m_parts(parts),
      m_texts(std::make_shared<const LogTexts>(parts.language)),
      m_day(parts.clock.Today()),
      m_cache(parts.reads, m_texts, [this] { ChangeRows([] { return ListView::Change::Looks; }); }),
      m_writing(parts.writing, m_texts, parts.page),
      m_dayReading(
          parts.reads,
          [folder = parts.dataFolder](LogKind kind) { return std::optional(FindLogDays(folder, kind)); },
          [this](std::optional<std::vector<LocalDate>> days, LogKind kind) {
              if (days) OnDays(*std::move(days), kind);
          }),
      m_following(
          parts.reads,
          [texts = m_texts](const FollowRequest& request) {
              return std::optional<Followed>(FollowLog(request.place, request.wish, *texts, request.extent));
          },
          [this](std::optional<Followed> followed, const FollowRequest& request) {
              OnFollowed(std::move(followed), request);
          }) {
    m_days.push_back(m_day);
}

TrafficLogModel::~TrafficLogModel() {
    m_parts.listing.RequestStop();
}

int TrafficLogModel::AllRowCount() const {
    constexpr std::uint64_t kMost = 0x7FFFFFFF;
    return std::max(RowCount(), static_cast<int>(std::min(m_tally.count, kMost)));
}

const LogRow* TrafficLogModel::RowAt(int row) const {
    if (row < 0 || row >= RowCount()) return nullptr;
    const std::uint32_t number = m_rows.NumberOf(row);
    const LogRow* const found = m_cache.Find(number);
    if (found != nullptr || m_cache.IsComing(number)) return found;
    std::vector<std::uint32_t> numbers;
    const int end = std::min(row + kRowsBehind, RowCount());
    for (int near = std::max(row - kRowsBefore, 0); near < end; ++near) numbers.push_back(m_rows.NumberOf(near));
    m_cache.Want(std::move(numbers));
    return nullptr;
}

ListCell TrafficLogModel::Cell(int row, int column) const {
    const LogRow* const entry = RowAt(row);
    if (entry == nullptr || column < 0 || static_cast<std::size_t>(column) >= kLogColumnCount) return {};
    const bool isAction = static_cast<LogColumn>(column) == LogColumn::Action && !entry->isPacket;
    return {.text = entry->cells[static_cast<std::size_t>(column)],
            .tone = isAction ? ToneOf(entry->action) : Tone::Plain};
}

std::string TrafficLogModel::CellTip(int row, int column) const {
    const LogRow* const entry = RowAt(row);
    return entry != nullptr && static_cast<LogColumn>(column) == LogColumn::Program ? OneLine(entry->path)
                                                                                    : std::string();
}

std::optional<std::string> TrafficLogModel::Program(int row) const {
    const LogRow* const entry = RowAt(row);
    return entry != nullptr && !entry->path.empty() ? std::optional(entry->path) : std::nullopt;
}

std::string TrafficLogModel::Key(int row) const {
    return LogName() + ' ' + std::to_string(m_rows.NumberOf(row));
}

int TrafficLogModel::FindRow(const std::string& key) const {
    const std::string name = LogName() + ' ';
    if (!key.starts_with(name)) return -1;
    std::uint32_t number = 0;
    const char* const end = key.data() + key.size();
    const auto [rest, error] = std::from_chars(key.data() + name.size(), end, number);
    return error == std::errc() && rest == end ? m_rows.RowOf(number) : -1;
}

std::string TrafficLogModel::LogName() const {
    return KindName() + ' ' + FormatDay(m_day);
}

void TrafficLogModel::ArrangeBy(const RowOrder& order) {
    LogWish wish = m_wish;
    wish.searched = order.searched;
    wish.sortedBy =
        order.column == RowOrder::kAsRead ? std::nullopt : std::optional(static_cast<LogColumn>(order.column));
    wish.isAscending = order.isAscending;
    if (std::exchange(m_wish, wish) != wish && m_isShown) List();
}

// Another log: nothing of what is listed counts any more.
void TrafficLogModel::OpenLog() {
    m_isOtherFile = true;
    m_cache.Restart({.path = LogFilePath(m_parts.dataFolder, m_kind, m_day), .kind = m_kind});
    m_tally = {};
    ChangeRows([&] {
        m_rows.Restart(LogRows::Order::NewestFirst, 0, false);
        return ListView::Change::Rows;
    });
    if (View()) View()->SummaryChanged();
    List();
}

// The rows stay until the first of the new ones have been found.
void TrafficLogModel::List() {
    if (m_isOtherFile) {
        m_kept.reset();
    } else if (m_extent) {
        m_kept = {.extent = *m_extent, .wish = m_listedWish, .wasStopped = m_wasStopped};
    }
    Abandon();
    m_rows.ForgetPlaces();
    m_pass = Pass::Waits;
    BeginPass();
    if (View()) {
        View()->EmptyTextChanged();
        View()->ProgressChanged();
    }
    ScheduleWake();
}

// Gives up the listing that is under way; what it has found and not handed over is dropped.
void TrafficLogModel::Abandon() {
    m_parts.listing.RequestStop();
    m_pass = Pass::None;
    m_box = nullptr;
    ++m_passNumber;
    m_extent.reset();
    m_wasStopped = false;
    m_done = 0;
    m_total = 0;
}

void TrafficLogModel::BeginPass() {
    const auto box = std::make_shared<LogNewsBox>();
    const bool begins =
        m_parts.listing.Start([place = m_cache.Place(), wish = m_wish, texts = m_texts,
                               box](const StopSignal& stop) { ListLog(place, wish, *texts, stop, *box); });
    if (!begins) return;  // the last one has not ended
    m_box = box;
    m_pass = Pass::Runs;
}

void TrafficLogModel::TakeNews() {
    LogNews news = m_box->Take();
    m_done = news.done;
    m_total = news.total;
    TakeRows(news);
    if (news.isOver) {
        m_pass = Pass::None;
        m_wasStopped = news.wasStopped;
        m_extent = news.extent;
        if (m_wasStopped && !m_extent) KeepList();
        m_followAt = m_parts.clock.Elapsed() + kFollowPeriod;
    }
    if (!View()) return;
    View()->SummaryChanged();
    View()->ProgressChanged();
    View()->EmptyTextChanged();
}

// The rows are still those of the listing before, which are followed as before.
void TrafficLogModel::KeepList() {
    if (!m_kept) return;
    m_extent = m_kept->extent;
    m_wasStopped = m_kept->wasStopped;
    m_listedWish = m_kept->wish;
    m_kept.reset();
    if (std::exchange(m_wish, m_listedWish) == m_listedWish || !View()) return;
    View()->ChoicesChanged();
    View()->OrderKept({.searched = m_wish.searched,
                       .column = m_wish.sortedBy ? static_cast<int>(*m_wish.sortedBy) : RowOrder::kAsRead,
                       .isAscending = m_wish.isAscending});
}

void TrafficLogModel::TakeRows(LogNews& news) {
    if (news.isAnew) {
        m_kept.reset();
        m_listedWish = m_wish;
        m_tally = {};
        LogPlace place = m_cache.Place();
        if (news.packets) place.packets = news.packets;
        if (std::exchange(m_isOtherFile, false)) {
            m_cache.Restart(std::move(place));
        } else {
            m_cache.TakePlaces(place.packets);
        }
    }
    m_tally.Add(news.tally);
    m_cache.Put(std::move(news.rows));
    if (!news.isAnew && news.plain == 0 && news.numbers.empty()) return;
    ChangeRows([&] {
        if (news.isAnew) {
            const bool isPacketLog = m_cache.Place().kind == LogKind::Packet;
            m_rows.Restart(isPacketLog ? LogRows::Order::AsInFile : LogRows::Order::NewestFirst,
                           static_cast<std::uint32_t>(news.total), m_wish.sortedBy.has_value());
        }
        m_rows.AddFound(news.plain, std::move(news.numbers));
        return news.isAnew ? ListView::Change::Rows : ListView::Change::Behind;
    });
}

// What a stopped listing has left out cannot be told from what the service has appended to a packet log since.
bool TrafficLogModel::MayFollow() const {
    return m_isShown && m_pass == Pass::None && m_extent && !(m_wasStopped && m_kind == LogKind::Packet);
}

void TrafficLogModel::Follow() {
    m_followAt = m_parts.clock.Elapsed() + kFollowPeriod;
    (void)FollowToday();
    if (!MayFollow() || m_following.IsReading()) return;
    m_following.Refresh({.place = m_cache.Place(), .wish = m_wish, .extent = *m_extent, .pass = m_passNumber});
}

void TrafficLogModel::OnFollowed(std::optional<Followed> followed, const FollowRequest& request) {
    if (!followed || request.pass != m_passNumber || m_pass != Pass::None) return;
    if (!*followed) {
        m_isOtherFile = true;
        m_dayReading.Refresh(m_kind);
        return List();
    }
    LogNews& news = **followed;
    m_extent = news.extent;
    if (news.tally.count == 0) return;
    m_tally.Add(news.tally);
    m_cache.Put(std::move(news.rows));
    const auto count = static_cast<int>(news.plain + news.numbers.size());
    if (count > 0 && m_rows.GetOrder() == LogRows::Order::NewestFirst) {
        m_rows.AddAppended(news.plain, std::move(news.numbers));
        if (View()) View()->RowsCameFirst(count);
    } else if (count > 0) {
        ChangeRows([&] {
            m_rows.AddAppended(news.plain, std::move(news.numbers));
            return ListView::Change::Behind;
        });
    }
    if (View()) View()->SummaryChanged();
}

// After midnight the list goes on with the log of the new day.
// A reading of the days can have put today among them before.
bool TrafficLogModel::FollowToday() {
    const LocalDate today = m_parts.clock.Today();
    const bool isKnown = std::find(m_days.begin(), m_days.end(), today) != m_days.end();
    if (!isKnown) {
        m_dayReading.Refresh(m_kind);
        m_days.insert(m_days.begin(), today);
    }
    const bool moves = m_followsToday && !(m_day == today);
    if (moves) {
        m_day = today;
        OpenLog();
    }
    if ((!isKnown || moves) && View()) View()->ChoicesChanged();
    return moves;
}

void TrafficLogModel::OnDays(std::vector<LocalDate> days, LogKind kind) {
    if (kind != m_kind) return;
    const auto order = [](LocalDate a, LocalDate b) {
        return std::tie(a.year, a.month, a.day) > std::tie(b.year, b.month, b.day);
    };
    // Today can be chosen before there is anything, and what is listed stays.
    for (const LocalDate day : {m_parts.clock.Today(), m_day}) {
        const auto at = std::lower_bound(days.begin(), days.end(), day, order);
        if (at == days.end() || !(*at == day)) days.insert(at, day);
    }
    if (days == m_days) return;
    m_days = std::move(days);
    if (View()) View()->ChoicesChanged();
}

void TrafficLogModel::ReadAnew() {
    m_dayReading.Refresh(m_kind);
    m_isOtherFile = true;
    List();
}

void TrafficLogModel::Read(ReadReason reason) {
    if (reason == ReadReason::RulesChanged) return;  // nothing that is shown here
    if (reason == ReadReason::LogsDeleted) return OnLogsDeleted();
    m_isShown = true;
    m_dayReading.Refresh(m_kind);
    if (FollowToday()) return;
    if (m_cache.Place().path.empty()) return OpenLog();
    // What is listed stays with its selection, unless following finds that the file is another one.
    const bool isListed = m_extent && m_wish == m_listedWish && (reason == ReadReason::Shown || !m_wasStopped);
    if (!isListed) return ReadAnew();
    Follow();
    ScheduleWake();
}

void TrafficLogModel::OnHidden() {
    m_isShown = false;
    if (m_pass != Pass::None) Abandon();
}

void TrafficLogModel::OnLogsDeleted() {
    m_settledAt = m_parts.clock.Elapsed() + kWritingPause;
    ScheduleWake();
}

void TrafficLogModel::OnWake() {
    const auto now = m_parts.clock.Elapsed();
    if (m_settledAt && now >= *m_settledAt) {
        m_settledAt.reset();
        if (m_isShown) {
            ReadAnew();
        } else {
            Abandon();
        }
    }
    if (m_pass == Pass::Waits) BeginPass();
    if (m_pass == Pass::Runs) TakeNews();
    if (m_writing.IsBusy()) {
        if (const auto finished = m_writing.Poll()) TellFinished(*finished);
        if (View()) View()->ProgressChanged();
    }
    if (m_isShown && now >= m_followAt) Follow();
    ScheduleWake();
}

void TrafficLogModel::ScheduleWake() {
    if (!View()) return;
    if (m_pass != Pass::None || m_writing.IsBusy()) return View()->WakeIn(kJobPeriod);
    std::optional<std::chrono::milliseconds> at = m_settledAt;
    if (m_isShown) at = std::min(at.value_or(m_followAt), m_followAt);
    if (at) View()->WakeIn(std::max(*at - m_parts.clock.Elapsed(), kJobPeriod));
}

}  // namespace brennvar
