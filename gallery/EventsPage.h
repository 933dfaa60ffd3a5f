// What the tests and the page "events" agree on. The page is a dialog with one of each control, which drives as any
// of the program's; its text kEventLog has what its controls have told it, one event a line, the last one at the
// end. Whoever sets that text to nothing empties it.
#pragma once

namespace brennvar::gallery {

inline constexpr char kEventsCaption[] = "Events";

// The buttons are IDOK, the default one, and IDCANCEL, which ends the program with that number.
enum EventsControl : int {
    kEventLog = 100,
    kApply = 201,        // a push button, mnemonic P: "button 201 clicked"
    kRemember = 211,     // a check box, mnemonic R: "check 211 on", "check 211 off"
    kFirstChoice = 221,  // three radio buttons, the first one chosen: "radio 222 chosen"
    kLastChoice = 223,
    kMode = 231,       // a combo box with kModes, the first one selected: "combo 231 selected 1"
    kName = 241,       // an edit field with a label before it, mnemonic N: "edit 241 changed to TEXT"
    kPort = 242,       // digits only, at most five: "edit 242 changed to 80"
    kHost = 251,       // an address box: "address 251 changed to 127.0.0.1"
    kRules = 261,      // a tree: "row 1 checked", "row 1 unchecked", "row 0 opened"
    kAllowItem = 301,  // commands of the tree's menu: "menu 302 chosen"
    kDenyItem = 302,
};
inline constexpr const char* kModes[] = {"Normal", "Allow all", "Block all"};

// Of the tree's entries each program has this many rules below it, which alone have check boxes. All programs but
// the first one are collapsed.
inline constexpr int kPrograms = 40;
inline constexpr int kRulesEach = 3;

}  // namespace brennvar::gallery
