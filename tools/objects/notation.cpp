// notation.cpp - how single values are written.
#include "objects/notation.h"

#include "swct/types.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cstddef>
#include <numeric>
#include <utility>

namespace tool {

namespace {

constexpr std::string_view kDigits = "0123456789abcdef";

// The value of a hexadecimal digit, or 16.
unsigned DigitValue(char digit)
{
    const char lower = digit >= 'A' && digit <= 'F' ? static_cast<char>(digit - 'A' + 'a') : digit;
    const std::size_t value = kDigits.find(lower);
    return value == std::string_view::npos ? 16U : static_cast<unsigned>(value);
}

bool ParseByte(std::string_view digits, uint8_t& byte)
{
    const unsigned high = DigitValue(digits[0]);
    const unsigned low = DigitValue(digits[1]);
    byte = static_cast<uint8_t>(((high & 15U) << 4U) | (low & 15U));
    return high < 16U && low < 16U;
}

void AppendByte(std::string& text, uint8_t byte)
{
    text += kDigits[byte >> 4U];
    text += kDigits[byte & 15U];
}

// A VID without leading zeros, signs or blanks.
bool ParseVid(std::string_view text, uint16_t& vid)
{
    const auto [pEnd, error] = std::from_chars(text.data(), text.data() + text.size(), vid);
    return error == std::errc() && pEnd == text.data() + text.size() && text[0] != '0' && vid <= SWCT_PB_VID_MAX;
}

// The length of the UTF-8 character at the start of a text that is not empty, 0 when it is none.
std::size_t CharacterLength(std::string_view text)
{
    struct Form {
        uint8_t first, last; // of the first byte
        std::size_t length;
        uint8_t secondMin, secondMax; // narrower than 80 to BF: no overlong forms, no surrogates
    };
    static constexpr std::array<Form, 9> kForms = {{{0x00, 0x7F, 1, 0, 0},
                                                    {0xC2, 0xDF, 2, 0x80, 0xBF},
                                                    {0xE0, 0xE0, 3, 0xA0, 0xBF},
                                                    {0xE1, 0xEC, 3, 0x80, 0xBF},
                                                    {0xED, 0xED, 3, 0x80, 0x9F},
                                                    {0xEE, 0xEF, 3, 0x80, 0xBF},
                                                    {0xF0, 0xF0, 4, 0x90, 0xBF},
                                                    {0xF1, 0xF3, 4, 0x80, 0xBF},
                                                    {0xF4, 0xF4, 4, 0x80, 0x8F}}};
    const auto byte = [text](std::size_t index) { return static_cast<uint8_t>(text[index]); };
    const auto* const pForm = std::find_if(kForms.begin(), kForms.end(), [&byte](const Form& form) {
        return byte(0) >= form.first && byte(0) <= form.last;
    });
    if (pForm == kForms.end() || text.size() < pForm->length) {
        return 0;
    }
    if (pForm->length > 1 && (byte(1) < pForm->secondMin || byte(1) > pForm->secondMax)) {
        return 0;
    }
    for (std::size_t index = 2; index < pForm->length; ++index) {
        if ((byte(index) & 0xC0U) != 0x80U) {
            return 0;
        }
    }
    return pForm->length;
}

// What would break a line or make it look like another one: U+0000 to U+001F, U+007F to U+009F, the line separators and
// the marks that turn the direction of writing around.
bool IsControl(std::string_view character)
{
    const auto byte = [character](std::size_t index) { return static_cast<uint8_t>(character[index]); };
    switch (byte(0)) {
    case 0x7F:
        return true;
    case 0xC2:
        return byte(1) < 0xA0;
    case 0xE2: // U+2028 to U+202E, U+2066 to U+2069
        return (byte(1) == 0x80 && byte(2) >= 0xA8 && byte(2) <= 0xAE) ||
               (byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xA9);
    default:
        return byte(0) < 0x20;
    }
}

constexpr std::size_t kWordMax = 60; // longer words are no slips of the hand

// How many characters must be inserted, removed or replaced to make one word of the other, upper and lower case being
// the same.
std::size_t EditDistance(std::string_view left, std::string_view right)
{
    if (left.size() > kWordMax) {
        return left.size();
    }
    std::vector<std::size_t> row(right.size() + 1); // distances of the starts of 'right' to a start of 'left'
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < right.size(); ++j) {
            const bool isSame =
                std::tolower(static_cast<unsigned char>(left[i])) == std::tolower(static_cast<unsigned char>(right[j]));
            const std::size_t replaced = diagonal + (isSame ? 0U : 1U);
            diagonal = std::exchange(row[j + 1], std::min({replaced, row[j] + 1, row[j + 1] + 1}));
        }
    }
    return row.back();
}

} // namespace

bool ParsePort(std::string_view text, uint8_t& slot, uint8_t& port)
{
    if (text.size() != 3 || text[1] != '/' || text[0] < '1' || text[0] > '0' + SWCT_SLOT_MAX || text[2] < '1' ||
        text[2] > '0' + SWCT_PORT_MAX) {
        return false;
    }
    slot = static_cast<uint8_t>(text[0] - '0');
    port = static_cast<uint8_t>(text[2] - '0');
    return true;
}

std::string PortText(uint8_t slot, uint8_t port)
{
    return std::to_string(slot) + '/' + std::to_string(port);
}

bool ParseHex16(std::string_view text, uint32_t& number)
{
    std::array<uint8_t, 2> bytes{};
    if (text.size() != 6 || !text.starts_with("0x") || !ParseHexBytes(text.substr(2), bytes)) {
        return false;
    }
    number = (static_cast<uint32_t>(bytes[0]) << 8U) | bytes[1];
    return true;
}

std::string Hex16Text(uint32_t number)
{
    std::string text = "0x";
    for (unsigned shift = 16; shift != 0; shift -= 4) {
        text += "0123456789ABCDEF"[(number >> (shift - 4U)) & 15U];
    }
    return text;
}

bool ParseHexBytes(std::string_view text, std::span<uint8_t> bytes)
{
    if (text.empty() || text.size() % 2 != 0 || text.size() / 2 > bytes.size()) {
        return false;
    }
    std::fill(bytes.begin(), bytes.end(), uint8_t{0});
    for (std::size_t index = 0; index < text.size() / 2; ++index) {
        if (!ParseByte(text.substr(2 * index, 2), bytes[index])) {
            return false;
        }
    }
    return true;
}

std::string HexBytesText(std::span<const uint8_t> bytes)
{
    std::string text;
    text.reserve(2 * bytes.size());
    for (const uint8_t byte : bytes) {
        AppendByte(text, byte);
    }
    return text;
}

bool ParseMac(std::string_view text, std::span<uint8_t> bytes)
{
    if (text.size() + 1 != 3 * bytes.size()) {
        return false;
    }
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        if (!ParseByte(text.substr(3 * index, 2), bytes[index]) || (index > 0 && text[3 * index - 1] != ':')) {
            return false;
        }
    }
    return true;
}

std::string MacText(std::span<const uint8_t> bytes)
{
    std::string text;
    for (const uint8_t byte : bytes) {
        text += text.empty() ? "" : ":";
        AppendByte(text, byte);
    }
    return text;
}

bool IsPlainText(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        if (length == 0 || IsControl(text.substr(0, length))) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

std::optional<std::string> PlainName(std::span<const uint8_t> bytes)
{
    const auto used = WithoutZeroTail(bytes);
    std::string name(used.begin(), used.end());
    if (used.size() == bytes.size() || !IsPlainText(name)) {
        return std::nullopt;
    }
    return name;
}

std::span<const uint8_t> WithoutZeroTail(std::span<const uint8_t> bytes)
{
    while (!bytes.empty() && bytes.back() == 0) {
        bytes = bytes.first(bytes.size() - 1);
    }
    return bytes;
}

bool ParseVidList(std::string_view text, std::vector<VidRange>& ranges)
{
    for (;;) {
        const std::string_view item = text.substr(0, text.find(','));
        const std::size_t dash = item.find('-');
        VidRange range{};
        if (!ParseVid(item.substr(0, dash), range.first)) {
            return false;
        }
        range.last = range.first;
        if (dash != std::string_view::npos && !ParseVid(item.substr(dash + 1), range.last)) {
            return false;
        }
        if (range.last < range.first || ranges.size() == SWCT_PB_VID_MAX) {
            return false;
        }
        ranges.push_back(range);
        if (item.size() == text.size()) {
            return true;
        }
        text.remove_prefix(item.size() + 1);
    }
}

void AppendVid(std::vector<VidRange>& ranges, uint16_t vid)
{
    if (!ranges.empty() && ranges.back().last + 1 == vid) {
        ranges.back().last = vid;
    } else {
        ranges.push_back({vid, vid});
    }
}

std::string VidListText(std::span<const VidRange> ranges)
{
    std::string text;
    for (const VidRange& range : ranges) {
        text += text.empty() ? "" : ",";
        text += std::to_string(range.first);
        if (range.last != range.first) {
            text += '-' + std::to_string(range.last);
        }
    }
    return text;
}

std::string_view NearestWord(std::string_view word, std::span<const std::string_view> candidates)
{
    std::string_view nearest;
    std::size_t least = word.size() / 2 + 1; // more changes than half of it: another word
    for (const std::string_view candidate : candidates) {
        const std::size_t distance = EditDistance(word, candidate);
        if (distance < least) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace tool
