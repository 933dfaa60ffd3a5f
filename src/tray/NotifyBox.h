// Where the notification area is, from what is known of the task bar. Arithmetic only; pixels of the screen.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ui/BalloonPlace.h"

namespace brennvar {

enum class ScreenEdge : std::uint8_t { Left, Top, Right, Bottom };

struct TaskbarFacts {
    struct Child {
        std::string className;
        PixelBox box;
    };
    struct Bar {
        ScreenEdge edge = ScreenEdge::Bottom;
        PixelBox box;
    };
    std::optional<PixelBox> window;  // of the task bar, if it can be found and has a size
    std::vector<Child> children;     // of that window, in the order in which Windows gives them
    std::optional<Bar> reported;     // what the shell says when there is no such window
    PixelBox workArea;               // for a shell that does not answer
};

[[nodiscard]] PixelBox FindNotifyBox(const TaskbarFacts& facts);

// What a balloon points at: the whole of a notification area; of a whole bar the stretch that the icons most likely
// take.
[[nodiscard]] PixelBox FindIcons(const PixelBox& notifyBox);

}  // namespace brennvar
