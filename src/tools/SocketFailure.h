// What the user is told of a connection that failed: one sentence below the socket's own text.
#pragma once

#include "config/Text.h"
#include "tools/SocketError.h"

namespace brennvar {

// What has happened and what to look at. Empty for a cancelled wait, which is no failure.
[[nodiscard]] Text SentenceOf(const SocketError& error);

}  // namespace brennvar
