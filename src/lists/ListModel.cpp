#include "lists/ListModel.h"

namespace brennvar {

int ListModel::FindRow(const std::string& key) const {
    const int count = RowCount();
    for (int row = 0; row < count; ++row) {
        if (Key(row) == key) return row;
    }
    return -1;
}

}  // namespace brennvar
