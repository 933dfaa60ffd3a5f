#include "app/ApplicationSender.h"

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
                    for (const ApplicationChange& change : changes) {
                        link.Send([change](CommandPipe& pipe) {
                            pipe.CMD_SET_APPLICATION_RULE(change.path, change.action);
                        });
                    }
                    // The link does one thing after the other: this one when the commands have gone.
                    link.Ask<bool>([](ServicePipes&) { return true; },
                                   [done = std::move(done)](std::optional<bool>) { done(); });
                }};
}

}  // namespace brennvar
