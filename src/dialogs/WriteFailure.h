// Why a file that the user wanted was not written, in a sentence.
#pragma once

#include <string>

#include "base/NewFile.h"
#include "config/Language.h"

namespace brennvar {

// The sentence and below it the path; of any result but Written.
[[nodiscard]] std::string DescribeWriteFailure(WriteResult result, const std::string& path,
                                               const Language& language);

}  // namespace brennvar
