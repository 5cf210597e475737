#include "checks.h"

namespace CorvelLint {

void check_syntax(const StyleTree& tree, Findings& findings) {
    for (const std::unique_ptr<StyleSource>& source : tree.sources())
        for (const Layers::Diagnostic& diagnostic : source->diagnostics)
            findings.add({source->file, diagnostic.line}, diagnostic.message);
}

} // namespace CorvelLint
