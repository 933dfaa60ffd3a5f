// What the Options page works with: options that a test changes by hand, a service that takes everything, values of
// the user, and skins and languages.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "support/CommanderRig.h"
#include "support/FakeClock.h"
#include "support/FakeTaskQueue.h"
#include "support/FakeUserValues.h"
#include "views/OptionEditor.h"

namespace brennvar::test {

class OptionsRig {
public:
    struct Source final : OptionSource {
        std::optional<OptionValues> values{OptionValues()};
        FileStamp stamp{.written = 1, .size = 128};
        [[nodiscard]] std::optional<StoredOptions> Read() const override {
            if (!values) return std::nullopt;
            return StoredOptions{.values = *values, .stamp = stamp};
        }
        [[nodiscard]] FileStamp Stamp() const override { return stamp; }
    };
    struct Resources final : SkinsAndLanguages {
        std::vector<std::string> skins{"Graphite", "Default"};
        std::vector<std::string> languages{"slovak", "Slovak", "English"};
        ResourceChoice current{.skin = "Default", .language = "Slovak"};
        bool takes = true;
        std::vector<std::string> applied;
        [[nodiscard]] std::vector<std::string> Skins() const override { return skins; }
        [[nodiscard]] std::vector<std::string> Languages() const override { return languages; }
        [[nodiscard]] ResourceChoice Current() const override { return current; }
        std::function<void()> lost;
        bool Apply(const ResourceChoice& from, const ResourceChoice& to, std::function<void()> whenLost) override {
            lost = std::move(whenLost);
            applied.push_back(from.skin + "/" + from.language + " to " + to.skin + "/" + to.language);
            return takes;
        }
    };

    CommanderRig rig;
    FakeTaskQueue reads;
    FakeClock clock;
    Source source;
    FakeUserValues userValues;
    Resources resources;

    [[nodiscard]] OptionEditor::Parts Parts() {
        return {.commander = rig.commander,
                .reads = reads,
                .options = source,
                .userValues = userValues,
                .resources = resources,
                .clock = clock};
    }
    // The service takes what was sent, and the options are read again. How many records it was.
    std::size_t Deliver() {
        const std::size_t records = rig.TakeRecords().size();
        reads.RunAll();
        return records;
    }
};

}  // namespace brennvar::test
