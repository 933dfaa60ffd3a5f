// The picture of the program that a question is about; read on one thread and painted on another.
#pragma once

#include "base/Handles_win.h"

namespace brennvar {

struct QuestionIcon {
    UniqueIcon icon;  // empty: the program has none
};

}  // namespace brennvar
