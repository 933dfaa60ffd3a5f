// Passwords of mail and proxy, from the file to the server and through the form: none of the memory that they went
// through is given back with them in it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <deque>

#include "commands/Batch.h"
#include "config/Options.h"
#include "mail/MailSending.h"
#include "support/DataFolder.h"
#include "support/FakeClock.h"
#include "support/FreedMemory.h"
#include "support/GoldenCipher.h"
#include "tools/WSocket.h"
#include "views/FormDraft.h"
#include "views/OptionFields.h"

namespace brennvar {
namespace {

constexpr std::string_view kMail = "mail-secret-0123456789abcdef";
constexpr std::string_view kProxy = "proxy-secret-0123456789abcdef";
constexpr std::string_view kMailLetters = "bWFpbC1zZWNyZXQtMDEyMzQ1Njc4OWFiY2RlZg==";
constexpr std::string_view kProxyLetters = "ZnJlZDpwcm94eS1zZWNyZXQtMDEyMzQ1Njc4OWFiY2RlZg==";  // with "fred:"

// Answers each send with the next reply, and keeps nothing of what is sent but which secrets it held.
class Server final : public StreamTransport {
public:
    Server(std::deque<std::string> replies, std::vector<std::string_view>& heard)
        : m_replies(std::move(replies)), m_heard(heard) {}

    std::uint32_t Resolve(const std::string&, Ipv4& address) override {
        address = 1;
        return 0;
    }
    std::uint32_t Connect(Ipv4, std::uint16_t, std::chrono::milliseconds) override { return 0; }
    StreamOutcome Send(std::span<const std::byte> bytes, std::chrono::milliseconds) override {
        const std::string_view sent(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        for (const std::string_view secret : {kProxy, kMailLetters, kProxyLetters}) {
            if (sent.find(secret) != std::string_view::npos) m_heard.push_back(secret);
        }
        if (!m_replies.empty()) {
            m_pending += m_replies.front();
            m_replies.pop_front();
        }
        return {.error = 0, .count = bytes.size()};
    }
    StreamOutcome Receive(std::span<std::byte> bytes, std::chrono::milliseconds) override {
        if (m_pending.empty()) return {.error = kErrorTimedOut, .count = 0};
        const std::size_t count = std::min(bytes.size(), m_pending.size());
        std::memcpy(bytes.data(), m_pending.data(), count);
        m_pending.erase(0, count);
        return {.error = 0, .count = count};
    }
    void Close() override { m_pending.clear(); }

private:
    std::deque<std::string> m_replies;
    std::vector<std::string_view>& m_heard;
    std::string m_pending;
};

std::string Record(int id, std::string_view text, char value = 0) {
    std::string record(128, '\0');
    record[0] = static_cast<char>(id);
    record[4] = value;
    return record.replace(8, text.size(), text);
}

TEST(SecretsTest, MailAndProxyPasswordsLeaveNothingBehind) {
    const test::DataFolder folder;
    test::FakeClock clock;
    folder.Write("\\config.conf",
                 test::EncipherByHand(Record(35, "a@mail.example") + Record(36, "b@mail.example") +
                                          Record(39, "mail.example") + Record(40, "fred") + Record(41, kMail) +
                                          Record(66, "proxy.example") + Record(67, "", 80) + Record(68, "fred") +
                                          Record(69, kProxy),
                                      128));
    std::vector<std::string_view> heard;
    const test::FreedMemory freed({kMail, kProxy, kMailLetters, kProxyLetters});
    {
        const std::optional<OptionValues> values = OptionReader(folder.Path(), clock).ReadAll();
        ASSERT_TRUE(values);
        MailWork work;
        work.account = MailAccountOf(*values);
        work.text = "Hello";
        MailNewsBox box;
        SendMailNow(work,
                    std::make_unique<Server>(
                        std::deque<std::string>{"HTTP/1.1 200 Go on\r\n\r\n220 Here\r\n", "250 Yes\r\n",
                                                "334 VXNlcm5hbWU6\r\n", "334 UGFzc3dvcmQ6\r\n", "235 Welcome\r\n",
                                                "250 Yes\r\n", "250 Yes\r\n", "354 Go on\r\n", "250 Yes\r\n",
                                                "221 Bye\r\n"},
                        heard),
                    clock, box);
        EXPECT_FALSE(box.Take().outcome->failure);
        ProxySettings proxy = ProxyOf(*values);
        proxy.kind = ProxyKind::Socks5;
        using namespace std::string_literals;
        CWSocket socket(
            std::make_unique<Server>(std::deque<std::string>{"\5\2"s, "\1\0"s, "\5\0\0\1\0\0\0\0\0\0"s}, heard),
            clock);
        EXPECT_NO_THROW(socket.Connect({.host = "mail.example", .port = 25}, proxy, ConnectStyle::Http11));

        // In the form: shown, typed over, applied, and on its way.
        FormDraft draft;
        draft.SetStored(
            {{1, FieldOf(OptionId::MailPassword, *values)}, {2, FieldOf(OptionId::ProxyPassword, *values)}});
        OptionValues wanted = *values;
        TakeField(OptionId::MailPassword, draft.Shown().at(2), wanted);
        draft.Edit(1, wanted.TextOf(OptionId::MailPassword));
        draft.Apply();
        draft.Settle();
        draft.Edit(1, "");
        const Batch batch = OptionsBatch(OptionGroup::Logging, wanted, *values);
        EXPECT_FALSE(batch.Info().steps.empty());
    }
    EXPECT_EQ(heard, (std::vector<std::string_view>{kProxyLetters, kMailLetters, kProxy}));
    EXPECT_EQ(freed.Count(), 0);
    // What is not wiped is seen.
    { const std::string plain(kMail); }
    EXPECT_EQ(freed.Count(), 1);
}

}  // namespace
}  // namespace brennvar
