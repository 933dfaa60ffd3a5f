// The Options page: sections, of which one is shown. It shows what the service has stored, but for the fields that
// the user has edited; Apply sends a whole section, and then the page shows what has become of it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "config/FileStamp_win.h"
#include "config/Language.h"
#include "config/OptionValues.h"
#include "config/ResourceChoice.h"
#include "config/UserValues.h"
#include "controls/Button_win.h"
#include "controls/Label_win.h"
#include "controls/ListBox_win.h"
#include "dialogs/Page_win.h"
#include "ipc/CommandPipe.h"
#include "ui/Balloon_win.h"
#include "views/FormDraft.h"
#include "views/OptionForm_win.h"
#include "views/OptionSections.h"

namespace brennvar {

class OptionsPage final : public CPage {
public:
    struct Resources {
        std::function<std::vector<std::string>()> skins;
        std::function<std::vector<std::string>()> languages;
        std::function<ResourceChoice()> current;
        // The user wants these instead of the current ones, or the same again. False: not now.
        std::function<bool(const ResourceChoice& current, const ResourceChoice& chosen)> apply;
    };
    // None of them waits. What they are given is called on this thread, later, and not at all when the program ends
    // before.
    struct Services {
        // Nothing where it could not be read: it is read again, and until the first time nothing can be applied.
        std::function<void(std::function<void(std::optional<OptionValues>)> done)> readOptions;
        // Of the file that readOptions reads.
        std::function<FileStamp()> stampOptions;
        std::function<void(HWND owner, std::function<void()> action, std::function<void()> refused)> checkPassword;
        // One batch, on the link thread; done when it has been delivered or given up.
        std::function<void(std::function<void(CommandPipe&)> batch, std::function<void()> done)> send;
        std::function<void(std::uint32_t port, std::function<void()> done)> sendProxyPort;
        UserValues& userValues;
    };

    OptionsPage(const CFonts& fonts, const Language& language, PageTexts texts, Resources resources,
                Services services);
    ~OptionsPage() override;

    void Reload() override;
    // Asks what to do with changes that have not been applied.
    bool MayLeave() override;

private:
    using Clock = std::chrono::steady_clock;
    static constexpr UINT_PTR kAttemptTimer = 2;
    static constexpr int kFilteringApplied = 1199;  // a command that the page posts to itself
    enum class Note { None, Stored, NotStored };
    // A change on its way to the service; begins with zeros.
    struct Attempt {
        int number;
        FormDraft::Fields sent;
        OptionValues wanted;
        bool isSent;       // the password has been entered
        bool isDelivered;  // nothing of it is left on the link thread
        Clock::time_point since;
    };
    struct Section {
        const SectionInfo* info = nullptr;
        FormDraft draft;
        std::unique_ptr<OptionForm> form;  // made when it is opened for the first time
        std::optional<Attempt> attempt;
        Note note = Note::None;
    };

    void OnCreateContent() override;
    void OnPlaceContent(const RECT& place) override;
    void OnShow() override;
    void OnHide() override;
    void OnCommand(int id, int notification) override;
    void OnTimer(UINT_PTR id) override;

    [[nodiscard]] Section& Current() { return m_sections[m_current]; }
    void ChooseSection();
    void OpenSection(std::size_t index);
    void PlaceForm();
    void ShowDraft(Section& section);
    void ShowNote();
    [[nodiscard]] std::string NoteText();
    void TakeFields();
    void WarnOfSpoofing();

    void Read();
    void OnRead(const std::optional<OptionValues>& values);
    void UpdateStored();
    [[nodiscard]] FormDraft::Fields StoredFields(const SectionInfo& section) const;
    [[nodiscard]] std::string StoredField(int control) const;
    void FillResourceLists();
    void Watch();

    // Applying (OptionsPageApply_win.cpp)
    void Apply();
    void ApplyOptions(std::size_t index);
    void SendOptions(std::size_t index);
    void ApplyFiltering(std::size_t index);
    void ShowFilteringApplied();
    void ApplyResources(Section& section);
    void BeginAttempt(Section& section);
    void BeginSending(Section& section);
    [[nodiscard]] std::function<void()> WhenDelivered(std::size_t index);
    void FollowAttempts();
    void JudgeAttempts();
    [[nodiscard]] bool IsStored(const Section& section) const;
    void EndAttempt(Section& section, Note note);
    // Does nothing when the page has gone.
    [[nodiscard]] std::function<void()> IfAlive(std::function<void()> action) const;

    const Language& m_language;
    const Resources m_resources;
    const Services m_services;
    CListBox m_list;
    CButton m_apply;
    CLabel m_note;
    CBalloon m_balloon;
    RECT m_formPlace{};
    std::vector<Section> m_sections;
    std::size_t m_current = 0;

    OptionValues m_values;             // as read last
    ResourceChoice m_choice;           // as the lists were filled, or as the last choice was sent
    std::optional<FileStamp> m_stamp;  // of the file when it was read last; none when it could not be
    bool m_isLoaded = false;           // it has been read once
    bool m_isReading = false;
    bool m_readsAgain = false;
    bool m_isShowing = false;  // the page fills fields itself
    bool m_isAsking = false;   // the user is asked about leaving
    int m_attemptCount = 0;
    std::shared_ptr<const bool> m_alive = std::make_shared<const bool>(true);
};

}  // namespace brennvar
