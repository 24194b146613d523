// notation.h - how single values are written: ports, MAC addresses, ether types, bytes, names, lists of VIDs.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

inline constexpr std::string_view kPortRule = "must be a port \"SLOT/PORT\", slot 1 to 3 and port 1 to 5";

// The Parse functions return false, and leave what they were given in any state, when the text is not as it should
// be.

// "1/2" of a switch port, slot 1 to 3 and port 1 to 5.
bool ParsePort(std::string_view text, uint8_t& slot, uint8_t& port);
std::string PortText(uint8_t slot, uint8_t port);

// "0x88A8".
bool ParseHex16(std::string_view text, uint32_t& number);
std::string Hex16Text(uint32_t number);

// Two digits for each byte; fewer bytes than there is room for are followed by zero bytes.
bool ParseHexBytes(std::string_view text, std::span<uint8_t> bytes);
std::string HexBytesText(std::span<const uint8_t> bytes);

// "aa:bb:cc:dd:ee:ff".
bool ParseMac(std::string_view text, std::span<uint8_t> bytes);
std::string MacText(std::span<const uint8_t> bytes);

// UTF-8 without control characters.
bool IsPlainText(std::string_view text);
// The text of a name field; none when it is no plain text, or when it does not end in zero bytes only.
std::optional<std::string> PlainName(std::span<const uint8_t> bytes);
std::span<const uint8_t> WithoutZeroTail(std::span<const uint8_t> bytes);

// The candidate that may be meant by a word that is none of them, or an empty text.
std::string_view NearestWord(std::string_view word, std::span<const std::string_view> candidates);

struct VidRange {
    uint16_t first;
    uint16_t last;
};

// "10-19,30": VIDs 1 to 4094, each range ascending.
bool ParseVidList(std::string_view text, std::vector<VidRange>& ranges);
// Adds a VID above all others of the list.
void AppendVid(std::vector<VidRange>& ranges, uint16_t vid);
std::string VidListText(std::span<const VidRange> ranges);

} // namespace tool
