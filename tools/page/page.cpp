// page.cpp - the text of the page with its data in it.
#include "page/page.h"

#include "page/page_text.h"

namespace tool {

namespace {

// The two places that differ between a report and the live page; the build has seen to it that each is there once.
std::string Fill(const std::string& sources, const std::string& data)
{
    const std::string_view page = kPageText;
    const std::size_t sourcesAt = page.find(kSourcesMark);
    const std::size_t dataAt = page.find(kDataMark);
    std::string text;
    text.reserve(page.size() + data.size() + sources.size());
    text.append(page.substr(0, sourcesAt)).append(sources);
    const std::size_t next = sourcesAt + kSourcesMark.size();
    text.append(page.substr(next, dataAt - next));
    for (const char c : data) {
        c == '<' ? text.append("\\u003c") : text.append(1, c); // no tag begins inside the data, whatever a name says
    }
    return text.append(page.substr(dataAt + kDataMark.size()));
}

} // namespace

std::string ReportPage(const std::string& data)
{
    return Fill("", data);
}

std::string LivePage()
{
    return Fill(" connect-src 'self';", "null");
}

} // namespace tool
