#include "views/OptionEditor.h"

#include <algorithm>
#include <span>
#include <utility>

#include "commands/Batch.h"
#include "config/ResourceIds.h"
#include "views/OptionFields.h"

namespace brennvar {

OptionEditor::OptionEditor(const Parts& parts, View& view)
    : m_parts(parts),
      m_view(view),
      m_drafts(OptionSections().size()),
      m_changes(parts.clock),
      m_reading(
          parts.reads, [&options = parts.options](const auto&) { return options.Read(); },
          [this](std::optional<StoredOptions> stored, std::chrono::milliseconds asked) {
              OnRead(std::move(stored), asked);
          }) {
    FollowStored();
}

bool OptionEditor::IsUnapplied(std::size_t section) const {
    return IsEdited(section) && !m_changes.Covers(section, Shown(section));
}

Text OptionEditor::NoteText(std::size_t section) const {
    using Note = OptionChanges::Note;
    const Note note = m_changes.NoteOf(section);
    if (note == Note::UnderWay) return Text{1212, "Applying..."};
    if (IsEdited(section)) return Text{1210, "Changes are not applied yet."};
    if (note == Note::Stored) return Text{1211, "Stored."};
    if (note == Note::Lost) return Text{1213, "The change was not stored."};
    if (m_isUnreadable && OptionSections()[section].kind == SectionInfo::Kind::Options) {
        return Text{2177, "The settings cannot be read at the moment."};
    }
    return {};
}

void OptionEditor::Edit(std::size_t section, const FormDraft::Fields& fields) {
    for (const auto& [control, content] : fields) m_drafts[section].Edit(control, content);
    if (IsEdited(section)) m_changes.Forget(section);
}

// Applying

bool OptionEditor::CanApply(std::size_t section) const {
    switch (OptionSections()[section].kind) {
        case SectionInfo::Kind::Options: return m_isLoaded;
        case SectionInfo::Kind::BrowserFiltering:
        case SectionInfo::Kind::Resources: return true;
        default: return false;
    }
}

bool OptionEditor::Apply(std::size_t section) {
    if (!CanApply(section)) return false;
    if (OptionSections()[section].kind == SectionInfo::Kind::Resources) {
        ApplyResources(section);
    } else {
        m_drafts[section].Apply();
        m_changes.Want(section, Shown(section));
        BeginNext();
    }
    m_view.ShowOptions();
    return true;
}

void OptionEditor::BeginNext() {
    const OptionChanges::Change* const change = m_changes.Begin();
    if (!change) return;
    if (OptionSections()[change->section].kind == SectionInfo::Kind::Options) {
        SendOptions(*change);
    } else {
        SendFiltering(*change);
    }
}

void OptionEditor::SendOptions(const OptionChanges::Change& change) {
    const auto allowed = [this] {
        m_changes.OnSent();
        m_view.ShowOptions();
    };
    const auto refused = [this, section = change.section] {
        m_changes.OnRefused();
        m_drafts[section].Withdraw();
        BeginNext();
        m_view.ShowOptions();
    };
    m_parts.commander.SendProtected(
        OptionsBatch(OptionSections()[change.section].group, Wanted(change), m_values),
        {.allowed = m_alive.Guard(allowed),
         .refused = m_alive.Guard(refused),
         .sent = m_alive.Guard([this, number = change.number](bool) { OnDelivered(number); }),
         .withdrawn = change.withdrawal.Signal()});
}

void OptionEditor::SendFiltering(const OptionChanges::Change& change) {
    m_changes.OnSent();
    for (const FilterFlag& flag : FilterFlags()) {
        m_parts.userValues.WriteUserValue(flag.userValue, change.fields.at(flag.control) == "1" ? 1 : 0);
    }
    if (change.fields.at(ControlOf(OptionId::FilteringProxyPort)).Text().empty()) return OnDelivered(change.number);
    const std::uint32_t port = Wanted(change).Number(OptionId::FilteringProxyPort);
    m_parts.userValues.WriteUserValue(kUserValueFilteringProxyPort, port);
    m_parts.commander.SetFilterPort(port,
                                    m_alive.Guard([this, number = change.number](bool) { OnDelivered(number); }),
                                    change.withdrawal.Signal());
}

void OptionEditor::OnDelivered(int number) {
    if (m_changes.OnDelivered(number)) Read();
}

void OptionEditor::ApplyResources(std::size_t section) {
    const FormDraft::Fields& fields = Shown(section);
    const ResourceChoice chosen{.skin = fields.at(IDC_OPTIONS_SKIN), .language = fields.at(IDC_OPTIONS_LANGUAGE)};
    // The next choice is compared with what the service has got now.
    const auto lost = [this] {
        m_choice = m_parts.resources.Current();
        m_view.TakeEdits();
        FollowStored();
        m_view.ShowOptions();
    };
    if (!m_parts.resources.Apply(m_choice, chosen, m_alive.Guard(lost))) return;
    m_choice = chosen;
    m_view.TakeEdits();
    FollowStored();
}

void OptionEditor::Follow() {
    if (m_changes.NeedsReading() && !m_reading.IsReading()) Read();
}

void OptionEditor::JudgeChange(std::chrono::milliseconds asked) {
    const OptionChanges::Change* const sent = m_changes.Sent();
    if (!sent) return;
    const std::optional<OptionChanges::Change> ended = m_changes.OnRead(IsStored(*sent), asked);
    if (!ended) return;
    // A successor has the last word on what the user wants of these fields.
    if (m_changes.NoteOf(ended->section) != OptionChanges::Note::UnderWay) m_drafts[ended->section].Settle();
    BeginNext();
}

OptionValues OptionEditor::Wanted(const OptionChanges::Change& change) const {
    OptionValues wanted = m_values;
    for (const auto& [control, content] : change.fields) {
        const OptionInfo* const option = OptionOfControl(control);
        if (!option) continue;
        // Without a port the one of the filtering proxy is left alone.
        if (option->id == OptionId::FilteringProxyPort && content.Text().empty()) continue;
        TakeField(option->id, content, wanted);
    }
    return wanted;
}

bool OptionEditor::IsStored(const OptionChanges::Change& change) const {
    const SectionInfo& section = OptionSections()[change.section];
    if (!Wanted(change).SameAs(m_values, section.group)) return false;
    const std::span<const FilterFlag> flags = FilterFlags();
    return section.kind != SectionInfo::Kind::BrowserFiltering ||
           std::all_of(flags.begin(), flags.end(), [&](const FilterFlag& flag) {
               return StoredField(flag.control) == change.fields.at(flag.control);
           });
}

// What is stored

void OptionEditor::Reload() {
    m_choice = m_parts.resources.Current();
    m_view.TakeEdits();
    FollowStored();
    m_view.ShowOptions();
    Read();
}

void OptionEditor::Watch() {
    if (m_reading.IsReading()) return;
    const FileStamp stamp = m_parts.options.Stamp();
    if (m_stamp != stamp || stamp.IsFresh(m_parts.clock.UtcNow())) Read();
}

void OptionEditor::Read() {
    m_reading.Refresh(m_parts.clock.Elapsed());
}

void OptionEditor::OnRead(std::optional<StoredOptions> stored, std::chrono::milliseconds asked) {
    m_view.TakeEdits();
    // Applied, the defaults that would show for a file that is held would take the place of all that it stores.
    m_stamp.reset();
    m_isUnreadable = !stored;
    if (stored) {
        m_stamp = stored->stamp;
        m_isLoaded = true;
        // What could not be stored may have been stored late.
        if (std::exchange(m_values, stored->values) != stored->values) m_changes.ForgetAll();
    }
    FollowStored();
    JudgeChange(asked);
    m_view.ShowOptions();
}

void OptionEditor::FollowStored() {
    const std::span<const SectionInfo> sections = OptionSections();
    for (std::size_t i = 0; i < sections.size(); ++i) {
        FormDraft::Fields fields;
        for (const RowInfo& row : sections[i].rows) {
            if (row.kind == RowKind::Field) fields[row.control] = StoredField(row.control);
        }
        m_drafts[i].SetStored(fields);
    }
}

std::string OptionEditor::StoredField(int control) const {
    if (const OptionInfo* const option = OptionOfControl(control)) {
        // Not the default: it would be applied with what stands beside it.
        if (option->id == OptionId::FilteringProxyPort && !m_isLoaded) return {};
        return FieldOf(option->id, m_values);
    }
    if (control == IDC_OPTIONS_SKIN) return m_choice.skin;
    if (control == IDC_OPTIONS_LANGUAGE) return m_choice.language;
    for (const FilterFlag& flag : FilterFlags()) {
        std::uint32_t value = 0;
        if (flag.control == control && m_parts.userValues.ReadUserValue(flag.userValue, value)) {
            return value != 0 ? "1" : "0";
        }
    }
    return "0";
}

}  // namespace brennvar
