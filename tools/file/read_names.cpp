#include "file/read_names.h"

#include "file/document.h"
#include "file/locate.h"
#include "file/parse.h"
#include "file/text_file.h"
#include "objects/failure.h"
#include "terminal/text.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <iterator>

namespace tool {

namespace {

using nlohmann::ordered_json;

// What other modules name, as the configuration writes it.
constexpr std::string_view kFields[] = {"ports.layer2Type", kFrameAdmission, "vlans.status", "vidTranslations.status"};

constexpr std::size_t kLongestName = 40;

class Reader {
public:
    explicit Reader(const std::string& file) : m_file(FileName(file)) {}

    SiteNames Read(const ordered_json& document)
    {
        Expect(document.is_object(), "$", "must be an object");
        for (const auto& [member, value] : document.items()) {
            const std::string place = "$." + CleanText(member);
            if (member == "counters") {
                ReadCounters(place, value);
            } else if (member == "stamp") {
                ReadStamp(place, value);
            } else if (member == "schema") {
                Expect(value == 1, place, "must be 1");
            } else if (member != "description" && member != "$schema") {
                ReadFields(member, place, value);
            }
        }
        return std::move(m_names);
    }

private:
    void Expect(bool isRight, const std::string& place, std::string_view rule) const
    {
        if (!isRight) {
            throw Failure(kBadInput, fmt::format("{}: {}: {}", m_file, place, rule));
        }
    }

    std::string Name(const std::string& place, const ordered_json& value) const
    {
        Expect(value.is_string(), place, "must be a text");
        const auto& name = value.get_ref<const std::string&>();
        Expect(!name.empty() && name.size() <= kLongestName && name == CleanText(name), place,
               fmt::format("must be a name of 1 to {} bytes without control characters", kLongestName));
        return name;
    }

    void ReadFields(const std::string& list, const std::string& place, const ordered_json& members)
    {
        Expect(members.is_object(), place, "must be an object");
        for (const auto& [member, values] : members.items()) {
            const std::string field = fmt::format("{}.{}", list, member);
            const std::string placeOfField = fmt::format("{}.{}", place, CleanText(member));
            Expect(std::find(std::begin(kFields), std::end(kFields), field) != std::end(kFields), placeOfField,
                   fmt::format("is no value that takes names; those are {}", fmt::join(kFields, ", ")));
            Expect(values.is_object(), placeOfField, R"(must be an object of names such as {"1": "all"})");
            for (const auto& [number, name] : values.items()) {
                const std::string placeOfValue = fmt::format("{}.{}", placeOfField, CleanText(number));
                uint32_t value = 0;
                const char* end = number.data() + number.size();
                const auto [last, error] = std::from_chars(number.data(), end, value);
                Expect(error == std::errc() && last == end, placeOfValue, "must be a number to 4294967295");
                m_names.Set(field, value, Name(placeOfValue, name));
            }
        }
        // A member without a list is none of ours.
        Expect(std::any_of(std::begin(kFields), std::end(kFields),
                           [&list](std::string_view field) { return field.starts_with(list + '.'); }),
               place, "is unknown; there are ports, vlans, vidTranslations, counters and stamp");
    }

    void ReadCounters(const std::string& place, const ordered_json& list)
    {
        Expect(list.is_array() && list.size() <= m_names.counters.size(), place,
               "must be a list of at most 8 names, null for none");
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (!list[i].is_null()) {
                const std::string placeOfName = fmt::format("{}[{}]", place, i);
                const std::string name = Name(placeOfName, list[i]);
                Expect(std::find(m_names.counters.begin(), m_names.counters.end(), name) == m_names.counters.end(),
                       placeOfName, "is the name of another counter, too");
                m_names.counters[i] = name;
            }
        }
    }

    // One of a few words; the first when the member is not there.
    template <std::size_t N>
    std::size_t WordOf(const std::string& place, const ordered_json& object, const char* member,
                       const std::array<const char*, N>& words) const
    {
        const auto value = object.find(member);
        if (value == object.end()) {
            return 0;
        }
        const auto word = std::find(words.begin(), words.end(), *value);
        Expect(word != words.end(), place + '.' + member, fmt::format("must be one of {}", fmt::join(words, ", ")));
        return static_cast<std::size_t>(word - words.begin());
    }

    void ReadStamp(const std::string& place, const ordered_json& object)
    {
        Expect(object.is_object(), place, "must be an object");
        for (const auto& [member, value] : object.items()) {
            Expect(member == "words" || member == "unit" || member == "of", place + '.' + CleanText(member),
                   "is unknown; there are words, unit and of");
        }
        StampMeaning stamp;
        stamp.words = static_cast<StampMeaning::Words>(
            WordOf<4>(place, object, "words", {"first", "second", "low-high", "high-low"}));
        stamp.isMilliseconds = WordOf<2>(place, object, "unit", {"seconds", "milliseconds"}) == 1;
        stamp.isStart = WordOf<2>(place, object, "of", {"end", "start"}) == 1;
        m_names.stamp = stamp;
    }

    std::string m_file;
    SiteNames m_names;
};

} // namespace

SiteNames ReadNames(const std::string& file)
{
    Faults faults(Strictness::kStrict);
    ordered_json document;
    const std::string text = ReadTextFile(file);
    const bool isRead = ReadDocument(text, faults, document);
    ParseResult result;
    faults.MoveTo(result);
    if (!isRead || !result.faults.empty()) { // a member that is there twice, too
        const ConfigFault& fault = result.faults.front();
        const std::size_t line = fault.line != 0 ? fault.line : LineOf(text, fault.path);
        throw Failure(kBadInput, fmt::format("{}: line {}, {}: {}", FileName(file), line, fault.path, fault.rule));
    }
    return Reader(file).Read(document);
}

} // namespace tool
