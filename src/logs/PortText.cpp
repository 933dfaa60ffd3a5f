#include "logs/PortText.h"

#include "logs/ServiceNameTable.h"

namespace brennvar {

std::string PortText(std::uint16_t port, std::uint32_t protocol, const Language& language) {
    const ServiceName& service = FindServiceName(port, protocol);
    return NumberAndName(port, service.remotePort != 0 ? language.GetText(service.text) : std::string());
}

void AddPorts(HeaderLines& lines, std::uint32_t protocol) {
    const auto say = [&](std::uint16_t port) { return PortText(port, protocol, lines.Texts()); };
    lines.AddField(Text{1557, "Source port:"}, lines.Bytes().Word(0), say);
    lines.AddField(Text{1567, "Destination port:"}, lines.Bytes().Word(2), say);
}

}  // namespace brennvar
