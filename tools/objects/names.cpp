#include "objects/names.h"

namespace tool {

namespace {

SiteNames& NamesInForce()
{
    static SiteNames names;
    return names;
}

} // namespace

void SiteNames::Set(std::string_view field, uint32_t value, std::string name)
{
    m_names[std::string(field)][value] = std::move(name);
}

const std::string* SiteNames::Find(std::string_view field, uint32_t value) const
{
    const auto names = m_names.find(field);
    if (names == m_names.end()) {
        return nullptr;
    }
    const auto name = names->second.find(value);
    return name == names->second.end() ? nullptr : &name->second;
}

std::string SiteNames::Text(std::string_view field, uint32_t value) const
{
    const std::string* name = Find(field, value);
    return name != nullptr ? *name : std::to_string(value);
}

std::string SiteNames::CounterTitle(std::size_t counter) const
{
    return counters.at(counter).empty() ? "Counter " + std::to_string(counter + 1) : counters.at(counter);
}

std::optional<uint64_t> SiteNames::TimeOf(uint32_t firstWord, uint32_t secondWord) const
{
    if (!stamp) {
        return std::nullopt;
    }
    uint64_t time = firstWord;
    switch (stamp->words) {
    case StampMeaning::Words::kFirst:
        break;
    case StampMeaning::Words::kSecond:
        time = secondWord;
        break;
    case StampMeaning::Words::kLowHigh:
        time |= uint64_t{secondWord} << 32U;
        break;
    case StampMeaning::Words::kHighLow:
        time = time << 32U | secondWord;
    }
    return stamp->isMilliseconds ? time / 1000 : time;
}

const SiteNames& Names()
{
    return NamesInForce();
}

void UseNames(SiteNames names)
{
    NamesInForce() = std::move(names);
}

} // namespace tool
