// The page of a model, without a window: remembers what the model has said.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "lists/ListModel.h"

namespace brennvar::test {

class FakeListView final : public ListView {
public:
    explicit FakeListView(ListModel& model) : m_model(model) { model.ShowIn(*this); }

    std::vector<int> commands;
    std::optional<std::chrono::milliseconds> wake;  // the call that is due

    // 'b' before a change, 'R' and 'L' after one of rows and looks, 'e' for the empty text; since the last call.
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
    void AfterChange(Change change) override { m_changes += change == Change::Rows ? 'R' : 'L'; }
    void EmptyTextChanged() override { m_changes += 'e'; }
    void WakeIn(std::chrono::milliseconds time) override { wake = time; }
    void PostCommand(int command) override { commands.push_back(command); }

    ListModel& m_model;
    std::string m_changes;
};

}  // namespace brennvar::test
