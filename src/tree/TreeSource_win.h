// A row source as the tree asks it: rows that have gone and exceptions yield empty rows, so that neither a list
// that shrinks between painting and clicking nor a failing source can do harm.
#pragma once

#include "tree/TreeRows_win.h"

namespace brennvar {

class TreeSource {
public:
    void Set(TreeRows& rows) { m_rows = &rows; }

    [[nodiscard]] int Count() const noexcept {
        try {
            const int count = m_rows ? m_rows->RowCount() : 0;
            return count > 0 ? count : 0;
        } catch (...) {
            return 0;
        }
    }
    [[nodiscard]] bool Has(int row) const noexcept { return row >= 0 && row < Count(); }
    [[nodiscard]] TreeRow Row(int row) const noexcept {
        try {
            return Has(row) ? m_rows->Row(row) : TreeRow{};
        } catch (...) {
            return {};
        }
    }
    [[nodiscard]] TreeCell Cell(int row, int column) const noexcept {
        try {
            return Has(row) ? m_rows->Cell(row, column) : TreeCell{};
        } catch (...) {
            return {};
        }
    }
    [[nodiscard]] TreeCell Words(int row, int column) const noexcept {
        try {
            return Has(row) ? m_rows->Words(row, column) : TreeCell{};
        } catch (...) {
            return {};
        }
    }
    [[nodiscard]] std::string Tip(int row, int column) const noexcept {
        try {
            return Has(row) ? m_rows->Tip(row, column) : std::string();
        } catch (...) {
            return {};
        }
    }
    void SetExpanded(int row, bool isExpanded) const noexcept {
        try {
            if (Has(row)) m_rows->SetExpanded(row, isExpanded);
        } catch (...) {
            // The row stays as it is, which the next painting shows.
        }
    }

private:
    TreeRows* m_rows = nullptr;
};

}  // namespace brennvar
