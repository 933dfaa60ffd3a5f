// The Options page: a change on its way to the service, and what has become of it.
#include "commands/Batch.h"
#include "views/OptionsPage_win.h"

#include <algorithm>
#include <span>
#include <utility>

#include "config/ResourceIds.h"
#include "dialogs/Questions_win.h"
#include "views/OptionFields.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

constexpr UINT kAttemptPause = 100;  // ms

// A service that has not taken a batch by then counts as missing.
constexpr auto kDeliveryLimit = 2s;
// How long it may take to rewrite its file after the last command: some 200 ms, and patience for a busy machine.
constexpr auto kStoreLimit = 1s;

}  // namespace

void OptionsPage::Apply() {
    Section& section = Current();
    if (section.attempt || !m_isLoaded) return;
    TakeFields();
    switch (section.info->kind) {
        case SectionInfo::Kind::Options: ApplyOptions(m_current); break;
        case SectionInfo::Kind::BrowserFiltering: ApplyFiltering(m_current); break;
        case SectionInfo::Kind::Resources: ApplyResources(section); break;
        case SectionInfo::Kind::Password: break;
    }
    ShowNote();
}

void OptionsPage::BeginAttempt(Section& section) {
    section.note = Note::None;
    section.attempt.emplace();
    section.attempt->number = ++m_attemptCount;
    section.attempt->sent = section.draft.Shown();
    section.attempt->wanted = m_values;
    for (const auto& [control, content] : section.attempt->sent) {
        if (const OptionInfo* const option = OptionOfControl(control)) {
            TakeField(option->id, content, section.attempt->wanted);
        }
    }
}

void OptionsPage::BeginSending(Section& section) {
    section.attempt->isSent = true;
    section.attempt->since = Clock::now();
    ::SetTimer(Window(), kAttemptTimer, kAttemptPause, nullptr);
}

void OptionsPage::ApplyOptions(std::size_t index) {
    BeginAttempt(m_sections[index]);
    m_services.checkPassword(::GetAncestor(Window(), GA_ROOT), IfAlive([this, index] { SendOptions(index); }),
                             IfAlive([this, index] {
                                 m_sections[index].attempt.reset();
                                 ShowNote();
                             }));
}

void OptionsPage::SendOptions(std::size_t index) {
    Section& section = m_sections[index];
    BeginSending(section);
    m_services.send([batch = OptionsBatch(section.info->group, section.attempt->wanted, m_values),
                     &language = m_language](CommandPipe& pipe) { batch.SendTo(pipe, language); },
                    WhenDelivered(index));
}

std::function<void()> OptionsPage::WhenDelivered(std::size_t index) {
    return IfAlive([this, index, number = m_sections[index].attempt->number] {
        Section& section = m_sections[index];
        // One that was given up may still be delivered when the user has begun another.
        if (!section.attempt || section.attempt->number != number) return;
        section.attempt->isDelivered = true;
        section.attempt->since = Clock::now();
        Read();
    });
}

void OptionsPage::ApplyFiltering(std::size_t index) {
    Section& section = m_sections[index];
    BeginAttempt(section);
    BeginSending(section);
    const Attempt& attempt = *section.attempt;
    const auto& port = attempt.sent.at(ControlOf(OptionId::FilteringProxyPort));
    for (const FilterFlag& flag : FilterFlags()) {
        m_services.userValues.WriteUserValue(flag.userValue, attempt.sent.at(flag.control) == "1" ? 1 : 0);
    }
    if (port.empty()) {
        // The port is left alone.
        section.attempt->wanted = m_values;
        WhenDelivered(index)();
    } else {
        const std::uint32_t number = attempt.wanted.Number(OptionId::FilteringProxyPort);
        m_services.userValues.WriteUserValue(kUserValueFilteringProxyPort, number);
        m_services.sendProxyPort(number, WhenDelivered(index));
    }
    ::PostMessageA(Window(), WM_COMMAND, kFilteringApplied, 0);
}

void OptionsPage::ShowFilteringApplied() {
    const HWND owner = ::GetAncestor(Window(), GA_ROOT);
    if (!::IsWindowEnabled(owner)) return;  // another dialog has come first
    ShowMessage(GetLook().fonts, m_language, owner,
                m_language.GetText(607, "Please restart your Internet browser to apply changes."));
}

void OptionsPage::ApplyResources(Section& section) {
    const FormDraft::Fields fields = section.draft.Shown();
    const ResourceChoice chosen{.skin = fields.at(IDC_OPTIONS_SKIN), .language = fields.at(IDC_OPTIONS_LANGUAGE)};
    // The next choice is compared with what the service has got now.
    if (!m_resources.apply(m_choice, chosen)) return;
    m_choice = chosen;
    UpdateStored();
}

void OptionsPage::FollowAttempts() {
    bool isAnyLeft = false;
    bool isAnyDue = false;
    for (const Section& section : m_sections) {
        if (!section.attempt || !section.attempt->isSent) continue;
        isAnyLeft = true;
        const auto waited = Clock::now() - section.attempt->since;
        isAnyDue |= section.attempt->isDelivered || waited > kDeliveryLimit;
    }
    if (!isAnyLeft) ::KillTimer(Window(), kAttemptTimer);
    if (isAnyDue && !m_isReading) Read();
}

void OptionsPage::JudgeAttempts() {
    for (Section& section : m_sections) {
        if (!section.attempt || !section.attempt->isSent) continue;
        const auto waited = Clock::now() - section.attempt->since;
        if (section.attempt->isDelivered && IsStored(section)) {
            EndAttempt(section, Note::Stored);
        } else if (waited > (section.attempt->isDelivered ? kStoreLimit : kDeliveryLimit)) {
            EndAttempt(section, Note::NotStored);
        }
    }
}

bool OptionsPage::IsStored(const Section& section) const {
    const Attempt& attempt = *section.attempt;
    if (section.info->group != OptionGroup::None) {
        return attempt.wanted.SameAs(m_values, section.info->group);
    }
    const std::span<const FilterFlag> flags = FilterFlags();
    return attempt.wanted.SameAs(m_values, OptionId::FilteringProxyPort) &&
           std::all_of(flags.begin(), flags.end(), [&](const FilterFlag& flag) {
               return StoredField(flag.control) == attempt.sent.at(flag.control);
           });
}

void OptionsPage::EndAttempt(Section& section, Note note) {
    section.draft.Settle(section.attempt->sent);
    section.attempt.reset();
    section.note = note;
}

}  // namespace brennvar
