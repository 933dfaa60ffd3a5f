// Which controls take input.
#pragma once

#include <initializer_list>

#include "base/Windows_win.h"

namespace brennvar {

struct Enabling {
    HWND control;
    bool isEnabled;
};

// Enables and disables; what is so already is left alone. A control that is disabled would keep the keyboard from
// everybody: next has it then, which may be one of those that are enabled.
void SetEnabled(std::initializer_list<Enabling> controls, HWND next);

}  // namespace brennvar
