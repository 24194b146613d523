// text_file.h - whole text files, in and out; what goes wrong is a Failure of one line.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// How messages call a file: "-" is the standard input.
std::string FileName(const std::string& file);

// All of a file or, of "-", of the standard input.  One that is larger than a configuration can be is refused.
std::string ReadTextFile(const std::string& file);

// Writes a file so that it appears complete or, when that fails, stays as it was.  What is no regular file (a pipe, a
// terminal) is written to as it stands.
void WriteTextFile(const std::string& file, std::string_view text);

} // namespace tool
