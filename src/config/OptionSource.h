// Where the options stand, as a seam: config.conf in the program (OptionFile_win.h).
#pragma once

#include <optional>

#include "config/FileStamp.h"
#include "config/OptionValues.h"

namespace brennvar {

// What was read, and what the file looked like before: a change that comes during the reading shows as another
// stamp.
struct StoredOptions {
    OptionValues values;
    FileStamp stamp;
};

class OptionSource {
public:
    virtual ~OptionSource() = default;
    // Every option; the default of the table for what has no record. May wait for the service; nothing when it
    // could not be read. Any thread.
    [[nodiscard]] virtual std::optional<StoredOptions> Read() const = 0;
    // Without waiting.
    [[nodiscard]] virtual FileStamp Stamp() const = 0;
};

}  // namespace brennvar
