// parse.cpp - from the text of a file to a configuration, with all faults of the file.
#include "file/parse.h"

#include "file/document.h"
#include "file/locate.h"
#include "file/read_objects.h"
#include "objects/rules.h"

namespace tool {

ParseResult Parse(std::string_view text, Strictness strictness)
{
    ParseResult result;
    Faults faults(strictness);
    Json document;
    if (ReadDocument(text, faults, document)) {
        result.configuration = ReadObjects(document, faults);
        if (!faults.IsKeyLost()) {
            const auto tell = [&](const Violation& violation) {
                const auto path = [&] {
                    const std::string object = PathOf(document, RowOf(violation.id), violation.pRecord);
                    return violation.field.empty() ? object : object + '.' + std::string(violation.field);
                };
                faults.DoubtAt(path, violation.value, violation.rule);
            };
            LeaveOutMisplaced(result.configuration, tell);
            CheckRules(result.configuration, tell);
        }
    }
    faults.MoveTo(result);
    for (ConfigFault& fault : result.faults) {
        if (fault.line == 0) {
            fault.line = LineOf(text, fault.path);
            fault.object = ObjectAt(document, fault.path);
        }
    }
    return result;
}

} // namespace tool
