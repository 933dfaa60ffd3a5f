// Bytes as what a mail server sends, in pieces: the dialogue ends whatever comes, and the password never shows.
#include "fuzz/FuzzInput.h"
#include "mail/MailSending.h"
#include "mail/MailWords.h"
#include "support/FakeTransport.h"

using namespace brennvar;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    test::FakeClock clock;
    test::FakePeer peer(clock);
    // The first byte says how large pieces are; a piece is on its way after every line of ours.
    const std::size_t pieceSize = 1 + data[0] % 64;
    std::string text = fuzz::TextOfInput(data + 1, size - 1);
    for (bool isFirst = true; !text.empty(); isFirst = false) {
        const std::size_t lineEnd = text.find('\n');
        std::string reply = text.substr(0, lineEnd == std::string::npos ? lineEnd : lineEnd + 1);
        text.erase(0, reply.size());
        test::FakePeer::Exchange exchange{.until = isFirst ? "" : "\r\n", .pieces = {}};
        for (; !reply.empty(); reply.erase(0, pieceSize)) exchange.pieces.push_back({reply.substr(0, pieceSize)});
        peer.script.push_back(std::move(exchange));
    }
    MailWork work{.account = {.from = "a@b", .to = "c@d", .cc = "e@f", .subject = "S", .server = {}},
                  .text = "text",
                  .date = {}};
    work.account.server.host = "192.0.2.25";
    work.account.server.user = "fred";
    work.account.server.password = Password("s3cret");
    MailNewsBox box;
    SendMailNow(work, peer.Transport(), clock, box);
    const MailNews news = box.Take();
    fuzz::Require(news.outcome.has_value());
    const std::string sentence = DescribeOutcome(*news.outcome, Language(nullptr));
    fuzz::Require(!sentence.empty() && sentence.find("s3cret") == std::string::npos);
    for (const MailLine& line : news.lines) {
        fuzz::Require(line.text.find("s3cret") == std::string::npos);
        fuzz::Require(line.text.find("czNjcmV0") == std::string::npos);
        fuzz::Require(line.text.find_first_of("\r\n") == std::string::npos);
    }
    return 0;
}
