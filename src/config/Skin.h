// The look that the user has chosen: a skin file names colours and pictures; whatever it lacks has a default at the
// place of use.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "config/IniSource.h"

namespace brennvar {

class Skin {
public:
    // The skin file, null for a look of defaults only, and the folder of its pictures without a trailing backslash.
    Skin(std::unique_ptr<const IniSource> file, std::string folder);

    // Red + 256 x green + 65536 x blue, as Windows wants a colour. Each part is read by itself, so that a file may
    // set one of them; a value that is no number from 0 to 255 counts as absent.
    [[nodiscard]] std::uint32_t GetSkinColor(const std::string& name, int defaultRed, int defaultGreen,
                                             int defaultBlue) const;
    // Full path of a picture; nobody has looked whether it is there. A name that leads out of the skin's folder
    // counts as absent.
    [[nodiscard]] std::string GetSkinImagePath(const std::string& key, const std::string& defaultFile) const;

private:
    [[nodiscard]] std::uint32_t ReadPart(const std::string& key, int fallback) const;

    std::unique_ptr<const IniSource> m_file;
    std::string m_folder;
};

}  // namespace brennvar
