"""Looks at the wire and answers on it, inside of one network namespace. Prints "ready" when it listens.

    wire.py sniff            prints each echo request that leaves: TTL, identifier, sequence, length, and the ICMP bytes
    wire.py answer [--foreign] [--options N] [--silent]
                             answers echo requests in place of the system; with --foreign an answer to somebody else's
                             request first, with --options N bytes of IP options (a multiple of 4, 40 at most), with
                             --silent nothing else
"""
import argparse
import socket
import struct
import sys

ECHO_REQUEST, ECHO_REPLY = 8, 0
IPV4 = 0x0800      # EtherType
OUTGOING = 4       # PACKET_OUTGOING of linux/if_packet.h


def checksum(data):
    if len(data) % 2:
        data += b"\0"
    total = sum(struct.unpack(f"!{len(data) // 2}H", data))
    while total >> 16:
        total = (total & 0xFFFF) + (total >> 16)
    return ~total & 0xFFFF


def sniff():
    with socket.socket(socket.AF_PACKET, socket.SOCK_DGRAM, socket.htons(3)) as wire:  # ETH_P_ALL: what leaves, too
        print("ready")
        while True:
            packet, origin = wire.recvfrom(65536)
            if origin[1] != IPV4 or origin[2] != OUTGOING or origin[0] == "lo" or packet[9] != socket.IPPROTO_ICMP:
                continue
            message = packet[(packet[0] & 15) * 4:]
            if message[0] == ECHO_REQUEST:
                identifier, sequence = struct.unpack_from("!HH", message, 4)
                good = "good" if checksum(message) == 0 else "bad"
                print(packet[8], identifier, sequence, len(message), good, message.hex())


def options_of(length):
    """An empty record of the route, as long as it goes, and no-operations."""
    if length < 8:
        return b"\1" * length
    return bytes((7, length - 1, 4)).ljust(length - 1, b"\0") + b"\1"


def answer(foreign, options, silent):
    with socket.socket(socket.AF_INET, socket.SOCK_RAW, socket.IPPROTO_ICMP) as wire:
        wire.setsockopt(socket.IPPROTO_IP, socket.IP_HDRINCL, 1)
        print("ready")
        while True:
            packet, _ = wire.recvfrom(65536)
            start = (packet[0] & 15) * 4
            if packet[start] != ECHO_REQUEST:
                continue
            identifier, sequence = struct.unpack_from("!HH", packet, start + 4)
            identifiers = ([identifier ^ 0x5555] if foreign else []) + ([] if silent else [identifier])
            for number in identifiers:
                body = struct.pack("!BBHHH", ECHO_REPLY, 0, 0, number, sequence) + packet[start + 8:]
                body = body[:2] + struct.pack("!H", checksum(body)) + body[4:]
                extra = options_of(options)
                # Length, identification and checksum of the header are filled in by the system.
                head = struct.pack("!BBHHHBBH4s4s", 0x45 + options // 4, 0, 0, 0, 0, 64, socket.IPPROTO_ICMP, 0,
                                   packet[16:20], packet[12:16])
                wire.sendto(head + extra + body, (socket.inet_ntoa(packet[12:16]), 0))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("what", choices=("sniff", "answer"))
    parser.add_argument("--foreign", action="store_true")
    parser.add_argument("--silent", action="store_true")
    parser.add_argument("--options", type=int, default=0)
    arguments = parser.parse_args()
    if arguments.what == "sniff":
        sniff()
    answer(arguments.foreign, arguments.options, arguments.silent)


if __name__ == "__main__":
    sys.exit(main())
