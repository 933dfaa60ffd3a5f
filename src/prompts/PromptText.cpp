#include "prompts/PromptText.h"

#include "base/DisplayName.h"
#include "ipc/DriverRecords.h"
#include "logs/ServiceNameTable.h"

namespace brennvar {
namespace {

std::string EndpointText(Ipv4 address, std::uint16_t port) {
    std::string text = FormatIpv4(address);
    if (port != 0) {
        text += ':';
        AppendNumber(text, port);
    }
    return text;
}

std::string ProtocolText(std::uint32_t protocol) {
    switch (protocol) {
        case kProtocolIcmp: return "ICMP";
        case kProtocolTcp: return "TCP";
        case kProtocolUdp: return "UDP";
        default: return std::to_string(protocol);
    }
}

PromptAdvice AdviceKind(std::optional<std::uint32_t> advice) {
    if (advice == 1U) return PromptAdvice::Allow;
    if (advice == 0U) return PromptAdvice::Deny;
    return PromptAdvice::None;
}

std::string AdviceText(PromptAdvice advice, const Language& language) {
    switch (advice) {
        case PromptAdvice::Allow: return language.GetText(486, "Allow");
        case PromptAdvice::Deny: return language.GetText(487, "Deny");
        case PromptAdvice::None: break;
    }
    return language.GetText(488, "None");
}

void FillFacts(PromptQuestion& question, const PromptFacts& facts, const Language& language) {
    const std::string unknown = language.GetText(1114, "unknown");
    const std::string unknownName = language.GetText(1115, "Unknown name");
    const std::string host = ShownText(facts.hostName);
    question.remoteHost = host.empty() ? unknown : host;
    question.localAddress = unknown;
    question.remoteAddress = unknown;
    if (facts.applicationKnown) {
        question.path = ShownText(facts.path);
        question.displayName = ShownNameOf(facts.path, facts.fileDescription, unknownName);
        question.icon = facts.icon;
        question.localAddress = EndpointText(facts.localAddress, facts.localPort);
        question.remoteAddress = EndpointText(facts.remoteAddress, facts.remotePort);
        question.address = facts.remoteAddress;
    } else {
        question.path = language.GetText(1401, "It could not be found out which program this is.");
        question.displayName = unknownName;
        question.whyNotRemembered =
            language.GetText(1402, "The answer for an unknown program cannot be remembered.");
    }
    question.program = DescribeProgram(facts.applicationKnown ? facts.path : "", facts.company, language);
    question.processId = std::to_string(facts.processId);
    const ServiceName& service = FindServiceName(facts.remotePort, facts.protocol);
    question.service = language.GetText(service.text);
    question.protocol = ProtocolText(facts.protocol);
    question.adviceKind = AdviceKind(facts.advice);
    question.advice = AdviceText(question.adviceKind, language);
}

void FillWords(PromptQuestion& question, const Language& language) {
    question.wantsText = language.GetText(457, "is trying to communicate to");
    question.detailsTitle = language.GetText(458, "Connection details:");
    question.remoteLabel = language.GetText(155, "Remote host:");
    question.serviceLabel = language.GetText(460, "Reason:");
    question.protocolLabel = language.GetText(484, "Protocol:");
    question.localLabel = language.GetText(2162, "Local address:");
    question.processLabel = language.GetText(1687, "Process ID:");
    question.adviceLabel = language.GetText(485, "General advice:");
    question.askText = language.GetText(489, "Allow this network communication?");
    question.caption = language.GetText(444, "Confirm network connection");
    question.allowButton = language.GetText(445, "Yes");
    question.denyButton = language.GetText(446, "No");
    question.closeTip = language.GetText(2434, "Blocks this time");
    if (question.address != 0) question.addressLink = language.GetText(1722, "&Address...");
    question.onceText = language.GetText(2260, "Yes allows and No blocks this connection only.");
    question.alwaysText = language.GetText(
        2261, "Yes always allows, No always blocks this program. Change it on the page Applications.");
    question.rememberText = language.GetText(447, "Remember my answer") + "\n" +
                            language.GetText(448, "and do not ask me next time") + "\n" +
                            language.GetText(449, "for this application.");
}

std::string BodyOf(const PromptQuestion& q) {
    return q.displayName + "\n" + q.wantsText + " " + CutTo40(q.remoteHost) + ".\n\n" +  //
           q.detailsTitle + "\n" +                                                       //
           q.remoteLabel + " " + q.remoteAddress + "\n" +                                //
           q.serviceLabel + " " + q.service + "\n" +                                     //
           q.protocolLabel + " " + q.protocol + "\n\n" +                                 //
           q.adviceLabel + " " + q.advice + "\n\n" +                                     //
           q.askText;
}

}  // namespace

PromptQuestion BuildPromptQuestion(const PromptFacts& facts, const Language& language) {
    PromptQuestion question;
    FillFacts(question, facts, language);
    FillWords(question, language);
    question.body = BodyOf(question);
    return question;
}

}  // namespace brennvar
