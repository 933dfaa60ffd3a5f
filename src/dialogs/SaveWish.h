// A file to be written or read, as the user is asked for it, and the answer (dialogs/SavePlaceDialog_win.h asks).
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
    // Whether the dialog asks before an existing file is replaced. Not where the file gets another name than the
    // one that is chosen: whoever makes that name asks.
    bool asksToReplace = true;
};

// A file to be read: the name is suggested as it stands.
struct OpenWish {
    std::string title;
    std::string name;
    std::vector<SaveFileType> types;
};

struct SavePlace {
    std::string path;
    std::size_t type = 0;  // of SaveWish::types
};

}  // namespace brennvar
