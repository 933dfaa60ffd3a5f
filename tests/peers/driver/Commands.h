// The tools of the product, each as a command: what a user would see is printed line by line, and the last line is
// "outcome: ..." ("done" when nothing failed).
#pragma once

#include "Arguments.h"

namespace brennvar::peers {

void Pack(const Arguments& arguments);
void Import(const Arguments& arguments);
void SendMessageByMail(const Arguments& arguments);
// The shortest time of several for encoding a file's bytes in memory, in seconds.
void MeasureEncoding(const Arguments& arguments);
void TracePath(const Arguments& arguments);
void AskWhois(const Arguments& arguments);

}  // namespace brennvar::peers
