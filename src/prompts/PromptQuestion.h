// What the user is asked about a connection, and what the user says to it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "base/Ipv4.h"
#include "prompts/ProgramWords.h"

namespace brennvar {

struct QuestionIcon;  // QuestionIcon_win.h; pictures are known on Windows only

enum class PromptAdvice { None, Allow, Deny };

// The facts apart, for painting, and the whole text in its laid-down form, for the message control. All texts are
// in the language of the user, without trailing line breaks.
struct PromptQuestion {
    // Facts. What is not known reads "unknown".
    std::string path;                          // of the program file; of an unknown program why there is none
    std::string displayName;                   // the program as the user knows it, or "Unknown name"
    std::shared_ptr<const QuestionIcon> icon;  // null: the plain one
    std::string remoteHost;                    // from the DNS log; the body has 40 characters of it
    ProgramWords program;
    std::string processId;
    std::string localAddress;   // "a.b.c.d:port", without ":port" when there is none
    std::string remoteAddress;  // likewise
    Ipv4 address = 0;           // the same for the network tools; 0: not known
    std::string service;        // what the remote port stands for
    std::string protocol;       // "ICMP", "TCP", "UDP" or a number
    PromptAdvice adviceKind = PromptAdvice::None;
    std::string advice;

    // Words that stand around them.
    std::string wantsText;      // "is trying to communicate to"
    std::string detailsTitle;   // "Connection details:"
    std::string remoteLabel;    // "Remote host:"
    std::string serviceLabel;   // "Reason:"
    std::string protocolLabel;  // "Protocol:"
    std::string localLabel;     // "Local address:"
    std::string processLabel;   // "Process ID:"
    std::string adviceLabel;    // "General advice:"
    std::string askText;        // "Allow this network communication?"

    std::string body;  // the above in one text of several lines, without the program file, broken by "\n"

    // The dialog's own texts.
    std::string caption;
    std::string allowButton;
    std::string denyButton;
    std::string closeTip;      // what closing the question does
    std::string addressLink;   // opens the tools for the address; empty: there is none
    std::string rememberText;  // three lines
    // What Yes and No do, without the tick and with it.
    std::string onceText;
    std::string alwaysText;
    // Why the answer cannot be remembered; empty: it can.
    std::string whyNotRemembered;

    std::uint8_t charset = 0;  // of the fonts, by the language of the texts
};

struct PromptAnswer {
    bool allow = false;
    bool remember = false;
    friend bool operator==(const PromptAnswer&, const PromptAnswer&) = default;
};

}  // namespace brennvar
