// complete.h - words that may come next in a command line.
#pragma once

#include <string>
#include <vector>

namespace tool {

struct Candidate {
    std::string word;
    std::string meaning; // one line, or empty
};

using Candidates = std::vector<Candidate>;

// What is known of the command line where a value is wanted.
struct Asked {
    std::string current; // the beginning of the word
    std::string port;    // of an option --port before it
    std::string command;
    std::vector<std::string> words; // of the command's arguments before it
};

} // namespace tool
