// demo_collector.h - the statistics collector of the demo's node.
#pragma once

namespace tool {

// Attaches for writing and writes the queue history of a simulated day and some hours more, in about a second.  The
// traffic is made up from a fixed seed: every run writes the same.
void RunCollector();

} // namespace tool
