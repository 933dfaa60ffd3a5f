// The queue pipe and the list of trusted programs: whatever a client sends, and whatever stands in the file, the
// answer is yes, no or none, nothing is asked of a program that is trusted, and the rest of the record goes back as
// it came.
#include <cstring>
#include <utility>

#include "FuzzInput.h"
#include "prompts/ActivityServer.h"
#include "prompts/ActivityText.h"
#include "rules/ListRecords.h"
#include "rules/TrustedPrograms.h"
#include "support/FakeClock.h"

namespace brennvar::fuzz {
namespace {

class OneClient final : public RecordPipe {
public:
    OneClient(std::span<const std::byte> request, std::function<void()> gone)
        : m_request(request), m_gone(std::move(gone)) {}
    std::optional<ActivityQueueMessage> answer;

    bool Create() override { return true; }
    bool Accept() override { return true; }
    std::size_t Read(std::span<std::byte> buffer) override {
        const std::size_t size = std::min(buffer.size(), m_request.size());
        std::memcpy(buffer.data(), m_request.data(), size);
        return size;
    }
    bool Write(std::span<const std::byte> record) override {
        answer = DecodeRecord<ActivityQueueMessage>(record);
        return answer.has_value();
    }
    void Flush() override {}
    void Disconnect() override { m_gone(); }

private:
    const std::span<const std::byte> m_request;
    const std::function<void()> m_gone;
};

struct Sources final : ActivitySources {
    explicit Sources(std::string trustedFile) : file(std::move(trustedFile)) {}
    std::string file;
    bool IsTrusted(std::string_view path) override { return IsTrustedProgram(file, path); }
    std::optional<std::string> ProcessPath(std::uint32_t id) override { return std::string(id % 64, 'p'); }
};

struct User final : ActivityUser {
    explicit User(Sources& trusted) : sources(trusted) {}
    Sources& sources;
    bool isAsked = false;
    ActivityAnswer Ask(const ActivityRequest& request) override {
        isAsked = true;
        Require(request.actingPath.size() <= 4095 && request.targetPath.size() <= 4095);
        Require(request.actingPath.empty() || !sources.IsTrusted(request.actingPath));
        const Language language(nullptr);
        const ActivityQuestion question = BuildActivityQuestion(
            {.kind = request.kind, .acting = {.path = request.actingPath}, .target = {.path = request.targetPath}},
            language);
        for (const char c : question.displayName + question.path + question.targetName + question.targetPath) {
            Require(static_cast<unsigned char>(c) >= 0x20 && c != 0x7F);
        }
        return {};
    }
    void Trust(const std::string&) override { std::abort(); }
    void BringForward() override {}
    void LeaveProgram() override {}
};

void Exchange(std::span<const std::byte> request, const std::string& trustedFile) {
    test::FakeClock clock;
    Sources sources(trustedFile);
    User user(sources);
    ActivityServer* running = nullptr;
    OneClient client(request, [&] { running->RequestStop(); });
    ActivityServer server(client, sources, user, clock);
    running = &server;
    server.Run();
    if (!client.answer) return;
    ActivityQueueMessage expected = DecodeActivity(request);
    Require(client.answer->answer <= 1 && !(user.isAsked && client.answer->answer == 1));
    expected.kind = ActivityKind::Answered;
    expected.answer = client.answer->answer;
    Require(std::memcmp(&expected, &*client.answer, sizeof expected) == 0);
}

}  // namespace
}  // namespace brennvar::fuzz

// The first byte says how long the list is, in records; the request follows it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    if (size == 0) return 0;
    const std::size_t listSize = std::min(size - 1, data[0] * sizeof(TrustedRecord));
    const std::string file = fuzz::Folder().Write(
        "trusted.conf", fuzz::Enciphered(fuzz::TextOfInput(data + 1, listSize), sizeof(TrustedRecord)));
    fuzz::Exchange(std::as_bytes(std::span(data + 1 + listSize, size - 1 - listSize)), file);
    return 0;
}
