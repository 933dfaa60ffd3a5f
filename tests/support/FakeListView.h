// The page of a model, without a window: remembers what the model has said.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "lists/ListModel.h"
#include "lists/RowOrder.h"

namespace brennvar::test {

class FakeListView final : public ListView {
public:
    explicit FakeListView(ListModel& model) : m_model(model) { model.ShowIn(*this); }

    std::vector<int> commands;
    std::optional<std::chrono::milliseconds> wake;  // the call that is due
    std::string openedKey;
    std::vector<DetailsSheet> sheets;  // shown and updated
    std::optional<SaveWish> saveWish;
    std::optional<SavePlace> savePlace;  // the user's answer
    std::function<void()> whileAsked;    // what goes on before it
    std::string copied;
    std::optional<RowOrder> orderKept;
    std::vector<std::string> links;
    std::vector<std::string> folders;
    std::vector<std::pair<AddressTool, std::string>> tools;
    std::vector<TrafficFacts> made;  // rules were to be made of these
    std::vector<TrafficFacts> explained;
    std::vector<std::string> told;

    // 'b' before a change, 'R', 'B' and 'L' after one of rows, behind and looks, "F3" for three rows that came
    // first, 'e', 'c', 'p' and 's' for empty text, choices, progress and summary; since the last call.
    [[nodiscard]] std::string TakeChanges() { return std::exchange(m_changes, {}); }
    // The time of the call has come.
    void Wake() {
        wake.reset();
        m_model.OnWake();
    }
    // The row's cells, with tabs between them.
    [[nodiscard]] std::string Row(int row) const {
        std::string text;
        const int count = static_cast<int>(m_model.Columns().size());
        for (int column = 0; column < count; ++column) {
            if (column > 0) text += '\t';
            text += m_model.Cell(row, column).text;
        }
        return text;
    }

private:
    void BeforeChange() override { m_changes += 'b'; }
    void AfterChange(Change change) override {
        m_changes += change == Change::Rows ? 'R' : change == Change::Behind ? 'B' : 'L';
    }
    void RowsCameFirst(int count) override { m_changes += "F" + std::to_string(count); }
    void EmptyTextChanged() override { m_changes += 'e'; }
    void ChoicesChanged() override { m_changes += 'c'; }
    void OrderKept(const RowOrder& order) override { orderKept = order; }
    void ProgressChanged() override { m_changes += 'p'; }
    void SummaryChanged() override { m_changes += 's'; }
    void WakeIn(std::chrono::milliseconds time) override { wake = time; }
    void PostCommand(int command) override { commands.push_back(command); }
    void OpenPage(int command, const std::string& key) override {
        commands.push_back(command);
        openedKey = key;
    }
    void ShowSheet(const DetailsSheet& sheet) override { sheets.push_back(sheet); }
    void UpdateSheet(const DetailsSheet& sheet) override { sheets.push_back(sheet); }
    std::optional<SavePlace> AskSavePlace(const SaveWish& wish) override {
        saveWish = wish;
        if (whileAsked) whileAsked();
        return savePlace;
    }
    void CopyText(const std::string& text) override { copied = text; }
    void OpenLink(const std::string& address) override { links.push_back(address); }
    void OpenFolderOf(const std::string& file) override { folders.push_back(file); }
    void OpenTool(AddressTool tool, const std::string& hostOrAddress) override {
        tools.emplace_back(tool, hostOrAddress);
    }
    void MakeRule(const TrafficFacts& facts) override { made.push_back(facts); }
    void Explain(const TrafficFacts& facts) override { explained.push_back(facts); }
    void Tell(const std::string& title, const std::string& text) override { told.push_back(title + ": " + text); }

    ListModel& m_model;
    std::string m_changes;
};

}  // namespace brennvar::test
