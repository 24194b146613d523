// document.cpp - the builder that the JSON library's parser calls for every value of a text.
#include "file/document.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace tool {

namespace {

// Far above what a full node needs: memory stays bounded, and so does the search for equal members.
constexpr std::size_t kDepthMax = 16;
constexpr std::size_t kMembersMax = 64;
constexpr std::size_t kValuesMax = 4'000'000; // a change set of everything has more than half of that

// A fault at a byte of a text, counted as an editor counts.
void ReportAt(Faults& faults, std::string_view text, std::size_t offset, std::string rule)
{
    const std::string_view before = text.substr(0, offset);
    const auto line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
    const std::size_t lineStart = before.rfind('\n') + 1; // 0 in the first line: npos + 1
    faults.NoJson(line, "column " + std::to_string(offset - lineStart + 1), std::move(rule));
}

class Builder : public nlohmann::json_sax<Json> {
public:
    Builder(std::string_view text, Faults& faults, Json& document)
        : m_text(text), m_faults(faults), m_document(document)
    {
    }

    bool null() override
    {
        return Put(nullptr);
    }
    bool boolean(bool value) override
    {
        return Put(value);
    }
    bool number_integer(number_integer_t value) override
    {
        return Put(value);
    }
    bool number_unsigned(number_unsigned_t value) override
    {
        return Put(value);
    }
    bool number_float(number_float_t value, const string_t& /*text*/) override
    {
        return Put(value);
    }
    bool string(string_t& value) override
    {
        return Put(std::move(value));
    }
    bool binary(binary_t& /*value*/) override
    {
        return false;
    }
    bool start_object(std::size_t /*size*/) override
    {
        return Open(Json::object());
    }
    bool start_array(std::size_t /*size*/) override
    {
        return Open(Json::array());
    }
    bool end_object() override
    {
        m_open.pop_back();
        return true;
    }
    bool end_array() override
    {
        m_open.pop_back();
        return true;
    }
    bool key(string_t& name) override;
    bool parse_error(std::size_t position, const std::string& token, const Json::exception& error) override;

private:
    bool Put(Json&& value);
    bool Open(Json&& container);
    bool Refuse(std::string_view rule);
    void ReportTwice(const std::string& name);

    std::string_view m_text;
    Faults& m_faults;
    Json& m_document;
    std::vector<Json*> m_open; // the objects and arrays that the next value lies in
    Json* m_pMember = nullptr; // where the value of the last key goes
    std::size_t m_nrOfValues = 0;
};

bool Builder::Put(Json&& value)
{
    if (++m_nrOfValues > kValuesMax) {
        return Refuse("more values than a full node's configuration has");
    }
    if (m_open.empty()) {
        m_document = std::move(value);
    } else if (m_open.back()->is_array()) {
        m_open.back()->push_back(std::move(value));
    } else {
        *m_pMember = std::move(value);
    }
    return true;
}

bool Builder::Open(Json&& container)
{
    if (m_open.size() == kDepthMax) {
        return Refuse("nested deeper than a configuration is");
    }
    Json* const pParent = m_open.empty() ? nullptr : m_open.back();
    Json* const pMember = m_pMember;
    if (!Put(std::move(container))) {
        return false;
    }
    // The parent does not grow while this container is open, so the address stays good.
    if (pParent == nullptr) {
        m_open.push_back(&m_document);
    } else {
        m_open.push_back(pParent->is_array() ? &pParent->back() : pMember);
    }
    return true;
}

bool Builder::key(string_t& name)
{
    auto& members = m_open.back()->get_ref<Json::object_t&>();
    const auto it =
        std::find_if(members.begin(), members.end(), [&name](const auto& member) { return member.first == name; });
    if (it != members.end()) {
        ReportTwice(name);
        m_pMember = &it->second;
        return true;
    }
    if (members.size() == kMembersMax) {
        return Refuse("more members than an object of a configuration has");
    }
    m_pMember = &members.emplace_back(std::move(name), nullptr).second;
    return true;
}

void Builder::ReportTwice(const std::string& name)
{
    std::vector<Path> paths(1);
    paths.reserve(m_open.size() + 1); // paths point at their parents
    for (std::size_t level = 1; level < m_open.size(); ++level) {
        const Json& parent = *m_open[level - 1];
        if (parent.is_array()) {
            paths.emplace_back(paths.back(), parent.size() - 1);
        } else {
            // Not the last member: an object that is there twice is read again in its first place.
            const auto& members = parent.get_ref<const Json::object_t&>();
            const auto it = std::find_if(members.begin(), members.end(),
                                         [this, level](const auto& member) { return &member.second == m_open[level]; });
            paths.emplace_back(paths.back(), it->first);
        }
    }
    m_faults.Error(Path(paths.back(), name), nullptr, "the member is there twice");
}

bool Builder::Refuse(std::string_view rule)
{
    m_faults.Error(Path(), nullptr, rule);
    return false;
}

bool Builder::parse_error(std::size_t position, const std::string& /*token*/, const Json::exception& error)
{
    // The library counts the bytes that it has read, the offending one included.
    const std::size_t offset = std::min(position == 0 ? 0 : position - 1, m_text.size());
    // "[json.exception.parse_error.101] parse error at line 1, column 2: WHAT; last read: TOKEN ...": the token can be
    // the whole file.
    std::string what = error.what();
    what.erase(0, what.find("] ") + 2);
    if (what.starts_with("parse error")) {
        what.erase(0, what.find(": ") + 2);
    }
    what = what.substr(0, what.find("; last read"));
    if (offset == m_text.size()) {
        what = "the text ends too early (" + what + ")";
    }
    ReportAt(m_faults, m_text, offset, what);
    return false;
}

} // namespace

bool ReadDocument(std::string_view text, Faults& faults, nlohmann::ordered_json& document)
{
    if (text.size() > kTextSizeMax) {
        faults.Error(Path(), nullptr,
                     "larger than " + std::to_string(kTextSizeMax >> 20U) + " MiB: no configuration is");
        return false;
    }
    const std::size_t zero = text.find('\0'); // the library takes it for the end
    if (zero != std::string_view::npos) {
        ReportAt(faults, text, zero, "a zero byte is no part of JSON");
        return false;
    }
    Builder builder(text, faults, document);
    return Json::sax_parse(text.begin(), text.end(), &builder);
}

} // namespace tool
