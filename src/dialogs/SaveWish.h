// A file to be written, as the user is asked for it, and the answer (dialogs/SavePlaceDialog_win.h asks).
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace brennvar {

struct SaveFileType {
    std::string label;      // "CSV"
    std::string extension;  // "csv"
};

struct SaveWish {
    std::string title;
    std::string name;  // suggested, without an extension
    std::vector<SaveFileType> types;
};

struct SavePlace {
    std::string path;
    std::size_t type = 0;  // of SaveWish::types
};

}  // namespace brennvar
