// What the Options page shows and does, without its window. Each section shows what the service has stored, but for
// the fields that the user has edited; Apply sends a whole section, and then it is seen what has become of it.
// User-interface thread only; nothing here waits.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "base/Refreshed.h"
#include "base/TaskQueue.h"
#include "base/WhileAlive.h"
#include "commands/Commander.h"
#include "config/OptionSource.h"
#include "config/OptionValues.h"
#include "config/ResourceChoice.h"
#include "config/SkinsAndLanguages.h"
#include "config/Text.h"
#include "config/UserValues.h"
#include "views/FormDraft.h"
#include "views/OptionChanges.h"
#include "views/OptionSections.h"

namespace brennvar {

class OptionEditor {
public:
    // Borrowed for the life of the program.
    struct Parts {
        Commander& commander;
        TaskQueue& reads;  // reads the options, which may have to wait for the service
        const OptionSource& options;
        UserValues& userValues;
        SkinsAndLanguages& resources;
        const Clock& clock;
    };
    // Who shows it.
    class View {
    public:
        virtual ~View() = default;
        // Fields are about to follow what is stored: what stands in them now is to be handed over by Edit. Not
        // every change is told by a control: a program that works it need not do so.
        virtual void TakeEdits() = 0;
        // Fields, notes and what can be done may have changed.
        virtual void ShowOptions() = 0;
    };
    // Nothing is read yet; until then the defaults are shown, and what the service stores cannot be applied: the
    // defaults would take the place of it.
    OptionEditor(const Parts& parts, View& view);

    // section: an index in OptionSections.
    [[nodiscard]] const FormDraft::Fields& Shown(std::size_t section) const { return m_drafts[section].Shown(); }
    [[nodiscard]] bool IsEdited(std::size_t section) const { return m_drafts[section].IsEdited(); }
    // Edited, and the user has not applied it as it is.
    [[nodiscard]] bool IsUnapplied(std::size_t section) const;
    // What has become of it, in one line; no text where there is nothing to say.
    [[nodiscard]] Text NoteText(std::size_t section) const;
    // Options need to have been read once; skin, language and browser filtering do not depend on them.
    [[nodiscard]] bool CanApply(std::size_t section) const;
    // A change has been sent: Follow is to be called every 100 ms or so.
    [[nodiscard]] bool IsFollowing() const { return m_changes.Sent() != nullptr; }

    // The user has made these of some fields.
    void Edit(std::size_t section, const FormDraft::Fields& fields);
    // Sends the section, or has it wait for those that were applied before. False when it cannot be applied.
    bool Apply(std::size_t section);
    void Discard(std::size_t section) { m_drafts[section].Discard(); }
    // The user has seen how the last change of the section has ended.
    void ForgetNote(std::size_t section) { m_changes.Forget(section); }

    // Shows what is stored, of options as soon as they have been read.
    void Reload();
    // Reads the options when they have changed; to be called every second while they are seen.
    void Watch();
    void Follow();

private:
    void BeginNext();
    void SendOptions(const OptionChanges::Change& change);
    void SendFiltering(const OptionChanges::Change& change);
    void OnDelivered(int number);
    void ApplyResources(std::size_t section);
    void Read();
    void OnRead(std::optional<StoredOptions> stored, std::chrono::milliseconds asked);
    void JudgeChange(std::chrono::milliseconds asked);
    // What is stored, with the fields of the change.
    [[nodiscard]] OptionValues Wanted(const OptionChanges::Change& change) const;
    [[nodiscard]] bool IsStored(const OptionChanges::Change& change) const;
    void FollowStored();
    [[nodiscard]] std::string StoredField(int control) const;

    const Parts m_parts;
    View& m_view;
    std::vector<FormDraft> m_drafts;  // as in OptionSections
    OptionChanges m_changes;
    OptionValues m_values;             // as read last
    std::optional<FileStamp> m_stamp;  // of the file, before it was read last; none when it could not be
    ResourceChoice m_choice;           // as it was read last, or as the last choice was sent
    bool m_isLoaded = false;
    bool m_isUnreadable = false;  // the last time
    // Asked for with the time.
    Refreshed<StoredOptions, std::chrono::milliseconds> m_reading;
    WhileAlive m_alive;
};

}  // namespace brennvar
