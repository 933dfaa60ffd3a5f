// What the mouse does to a thing that can be pressed.
#pragma once

namespace brennvar {

// The numbers are the frames of a skin image.
enum class Touch : int { Rest = 0, Hot = 1, Pressed = 2 };

}  // namespace brennvar
