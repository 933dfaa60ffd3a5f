#include "app/ApplicationSender_win.h"

#include <optional>
#include <utility>

namespace brennvar {

ApplicationChanges::Parts ConnectApplicationChanges(SecurityPasswordGate& gate, ServiceLink& link,
                                                    std::function<HWND()> owner) {
    return {.ask =
                [&gate, owner = std::move(owner)](std::function<void()> allowed, std::function<void()> refused) {
                    gate.CheckSecurityPassword(
                        {.owner = owner(), .action = std::move(allowed), .refused = std::move(refused)});
                },
            .send =
                [&link](const std::vector<ApplicationChange>& changes, std::function<void()> done) {
                    link.Send(
                        [changes](CommandPipe& pipe) {
                            for (const ApplicationChange& change : changes) {
                                pipe.CMD_SET_APPLICATION_RULE(change.path, change.action);
                            }
                        },
                        [done = std::move(done)](bool) { done(); });
                }};
}

}  // namespace brennvar
