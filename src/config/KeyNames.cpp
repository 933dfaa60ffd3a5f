#include "config/KeyNames.h"

namespace brennvar {

std::string KeyName(KeyStroke stroke, const Language& language) {
    const auto withControl = [&language](const std::string& key) {
        return language.GetText(2460, "Ctrl") + "+" + key;
    };
    switch (stroke) {
        case KeyStroke::ControlA: return withControl("A");
        case KeyStroke::ControlC: return withControl("C");
        case KeyStroke::ControlUp: return withControl(language.GetText(2461, "Up"));
        case KeyStroke::ControlDown: return withControl(language.GetText(2462, "Down"));
        case KeyStroke::Delete: return language.GetText(2463, "Del");
        case KeyStroke::Enter: return language.GetText(2464, "Enter");
        case KeyStroke::F5: return "F5";
    }
    return {};
}

std::string WithKey(const std::string& caption, KeyStroke stroke, const Language& language) {
    return caption + '\t' + KeyName(stroke, language);
}

}  // namespace brennvar
