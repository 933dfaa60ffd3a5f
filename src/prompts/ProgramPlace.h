// Whether a program runs from a place where installed programs do not lie: what came by mail or by the web starts
// from there, and so does what a program has unpacked for itself.
#pragma once

#include <cstdint>
#include <string_view>

namespace brennvar {

enum class ProgramPlace : std::uint8_t {
    Usual,
    Temporary,  // below a folder Temp, Tmp or Downloads
    UserData,   // below AppData, into which every program of the user can write; some install themselves there
};

// By the names of the folders alone; nothing is looked up. Either slash divides them, the case of letters, dots and
// blanks at the end of a name do not count, as with the system, and "." and ".." are followed. A short name (8.3)
// that one of them may have counts as the folder, though another folder may have it: who is in doubt is to be told.
// One that the system makes of a hash (from the fifth file of the same beginning on) is not known.
[[nodiscard]] ProgramPlace PlaceOfProgram(std::string_view path);

}  // namespace brennvar
