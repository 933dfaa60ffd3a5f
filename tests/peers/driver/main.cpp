// Works the network tools, the mail and the archives of the product without a window, so that they can be held
// against other programs: tool_driver COMMAND KEY=VALUE... (Arguments.h says how values are written)
//   whois  query, server, port, referral, referral-port; proxy, proxy-port, proxy-kind (http, socks5), proxy-user,
//          proxy-password
//   trace  host
//   mail   server, port, user, password, the proxy's as above, limit (seconds), plain (no EHLO), retries;
//          from, from-name, to, cc, bcc (several), subject, text, page (1250, 1251, 1252, 65001),
//          attach (path), name, type (once for each), cancel-at (bytes that have been sent)
//   encode file, encoding (base64, quoted-printable), times
//   pack   archive, file and name (several), comment, stored
//   import archive, data: the folder of the program's data, whose folder "Rules" it goes into
// Exit code 0 when the command ran to its end, whatever its outcome; 2 when it was not understood.
#include "Commands.h"

#include <cstdio>
#include <cstring>

int main(int count, char** words) {
    using namespace brennvar::peers;
    struct Command {
        const char* name;
        void (*run)(const Arguments& arguments);
    };
    constexpr Command kCommands[] = {
        {"pack", Pack},       {"import", Import},  {"encode", MeasureEncoding}, {"mail", SendMessageByMail},
        {"trace", TracePath}, {"whois", AskWhois},
    };
    // Lines are read while the program runs.
    (void)std::setvbuf(stdout, nullptr, _IONBF, 0);
    for (const Command& command : kCommands) {
        if (count < 2 || std::strcmp(words[1], command.name) != 0) continue;
        command.run(Arguments(count - 2, words + 2));
        return 0;
    }
    (void)std::fprintf(stderr, "no such command\n");
    return 2;
}
