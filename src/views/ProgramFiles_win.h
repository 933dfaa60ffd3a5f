// Program files of this machine. Those on other machines are not looked at.
#pragma once

#include "views/ProgramNames.h"

namespace brennvar {

class DiskProgramFiles final : public ProgramFiles {
public:
    [[nodiscard]] FileStamp Stamp(const std::string& path) const override;
    [[nodiscard]] std::string Description(const std::string& path) const override;
};

}  // namespace brennvar
