// complete_objects.h - the words that complete the name of an object, and its members.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace tool {

// 'words' are those behind add, set or delete.
std::set<std::string> NextObjectWords(const std::string& command, std::vector<std::string> words);

} // namespace tool
