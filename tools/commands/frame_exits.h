// frame_exits.h - where a frame leaves the node, for people and programs.
#pragma once

#include "commands/frame_way.h"
#include "terminal/terminal.h"

#include <string>

namespace tool {

// Null for VID 0, which is none.
Json VidOrNull(uint16_t vid);

// "1/1 tagged as VID 2110; 1/3 untagged through PEP 3"
std::string ExitsText(const FrameWay& way);
Json ExitsJson(const FrameWay& way);

// A sentence, with a blank before it.
std::string MissedText(const Missed& missed, const FrameWay& way);

} // namespace tool
