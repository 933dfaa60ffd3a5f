#include "dialogs/WriteFailure.h"

namespace brennvar {

std::string DescribeWriteFailure(WriteResult result, const std::string& path, const Language& language) {
    std::string text;
    switch (result) {
        case WriteResult::DiskFull:
            text = language.GetText(1462, "The disk is full. Nothing was written to this file:");
            break;
        case WriteResult::Denied:
            text = language.GetText(1463, "This file may not be written. Please choose another folder:");
            break;
        default: text = language.GetText(1464, "This file could not be written:"); break;
    }
    return text + '\n' + path;
}

}  // namespace brennvar
