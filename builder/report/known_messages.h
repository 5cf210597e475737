#pragma once

#include "builder/report/message.h"

#include <string>
#include <unordered_set>

namespace Lumenfold::Builder {

/// Which messages were told already: one reason may be met on several roads to it.
class KnownMessages {
public:
    /// False if a message with the same place and words was added before.
    bool add(const Message& message) {
        return known_
            .insert(message.file + '\n' + std::to_string(message.line) + '\n' + message.text)
            .second;
    }

private:
    std::unordered_set<std::string> known_;
};

} // namespace Lumenfold::Builder
