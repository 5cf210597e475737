#include "findings.h"

#include <ostream>

namespace CorvelLint {

void Findings::add(const Place& place, const std::string& message) {
    findings_.insert({place, message});
}

void Findings::print(std::ostream& out) const {
    for (const Finding& finding : findings_)
        out << finding.place.file << ':' << finding.place.line << ": " << finding.message << '\n';
}

} // namespace CorvelLint
