#include "prompts/ActivityServer.h"

#include <algorithm>
#include <cstring>

#include "base/AsciiCase.h"

namespace brennvar {
namespace {

constexpr std::string_view kOwnPrograms[] = {"brennvar.exe", "brennvargui.exe", "harrowlyn.exe",
                                             "harrowlynsrv.exe"};

std::uint32_t AnswerOf(bool isAllowed) {
    return isAllowed ? kActivityAllowed : kActivityDenied;
}

}  // namespace

bool IsOwnProgram(std::string_view path) {
    std::string lower(path);
    std::transform(lower.begin(), lower.end(), lower.begin(), &AsciiLower);
    return std::any_of(std::begin(kOwnPrograms), std::end(kOwnPrograms),
                       [&](std::string_view name) { return lower.find(name) != std::string::npos; });
}

ActivityQueueMessage DecodeActivity(std::span<const std::byte> bytes) {
    ActivityQueueMessage message{};
    std::memcpy(&message, bytes.data(), std::min(bytes.size(), sizeof message));
    return message;
}

void ActivityServer::Run() {
    if (!m_pipe.Create()) return;
    while (m_isRunning) {
        if (m_pipe.Accept()) {
            Serve();
        } else if (!m_waits.Sleep(kFailurePause)) {
            return;
        }
        m_pipe.Disconnect();
    }
}

void ActivityServer::Serve() {
    std::array<std::byte, sizeof(ActivityQueueMessage)> buffer;
    const std::size_t size = m_pipe.Read(buffer);
    if (size == 0) return;
    ActivityQueueMessage message = DecodeActivity(std::span(buffer).first(size));
    const Reply reply = Decide(message);
    if (reply == Reply::None) return;
    message.kind = ActivityKind::Answered;
    if (m_pipe.Write(RecordBytes(message)) && reply == Reply::Flushed) m_pipe.Flush();
}

ActivityServer::Reply ActivityServer::Decide(ActivityQueueMessage& message) {
    switch (message.kind) {
        case ActivityKind::WriteToProcess:
            message.answer = AnswerOf(IsAllowed(ActivityRequest::Kind::WriteToProcess, message));
            return Reply::Flushed;
        case ActivityKind::StartBrowser:
            message.answer = AnswerOf(IsAllowed(ActivityRequest::Kind::StartBrowser, message));
            return Reply::Flushed;
        case ActivityKind::ChangeAppInit:
            message.answer = AnswerOf(m_user.Ask({.kind = ActivityRequest::Kind::ChangeAppInit}).allow);
            return Reply::Flushed;
        case ActivityKind::IsOwnProcess: {
            const std::optional<std::string> path = m_sources.ProcessPath(message.processId);
            message.answer = AnswerOf(!path || !IsOwnProgram(*path));
            return Reply::Plain;
        }
        case ActivityKind::BringForward: m_user.BringForward(); return Reply::None;
        case ActivityKind::Leave: m_user.LeaveProgram(); return Reply::None;
        default: return Reply::None;  // the call that wakes this server, or nothing that it knows
    }
}

bool ActivityServer::IsAllowed(ActivityRequest::Kind kind, const ActivityQueueMessage& message) {
    const std::string actingPath(TextOf(message.actingPath));
    if (m_sources.IsTrusted(actingPath)) return true;
    const ActivityAnswer answer =
        m_user.Ask({.kind = kind, .actingPath = actingPath, .targetPath = std::string(TextOf(message.targetPath))});
    if (answer.allow && answer.trust) {
        m_user.Trust(actingPath);
        m_waits.Sleep(kTrustPause);
    }
    return answer.allow;
}

}  // namespace brennvar
