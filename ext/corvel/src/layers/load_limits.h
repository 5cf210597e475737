#pragma once

#include "layers/source_place.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Layers {

// A few bytes of a style file can stand for more than memory holds: expansions multiply, and layers
// that inherit from each other double with each line. Honest styles stay far below these limits.
// Each file has accounts of its own, so that one that goes beyond leaves the others whole.

/// What the expansions of one name may take together, in bytes of text.
constexpr std::size_t MAX_NAME_TEXT = 1'000'000;

struct LimitSizes {
    /// What the expansions of one file may stand for beyond what is written out: names, states and
    /// statements that are repeated.
    std::size_t repetitions = 300'000;
    /// What the layers of one file may inherit: attributes, states and layers copied or compared,
    /// so many and one for each byte of the file.
    std::size_t inheritance = 20'000;
    /// What files that need more share, in all folders together.
    std::size_t common_inheritance = 1'000'000;
};

/// So many bytes of a text that is copied or compared count as one repetition more.
constexpr std::size_t BYTES_PER_UNIT = 64;

/// What the messages about links of one tree may take together, in bytes.
constexpr std::size_t MAX_LINK_MESSAGES = 1'000'000;

class LLayer;

/// Tells in the log that a limit was reached at `layer`, with file and line of its "<<" or of the
/// next one around it. Once for each place.
void tell_limit(const LLayer& layer, const std::string& what);

/// Keeps the accounts of a tree that is being loaded and tells in the log, with file and line,
/// where a limit was reached.
class LoadLimits {
public:
    explicit LoadLimits(LimitSizes sizes = {})
        : sizes_(sizes) {}

    /// Opens the accounts of a file of `bytes` bytes.
    void begin_file(const SharedName& file, std::size_t bytes);

    /// Takes `units` of the present file's repetitions. False, told at `line`, if there are not so
    /// many left.
    bool spend_repetitions(std::size_t units, std::uint64_t line);
    bool has_repetitions() const { return repetitions_left_ > 0; }
    /// Tells that a name of the present file was left out.
    void tell_long_name(std::uint64_t line);

    /// Takes `units` of what the layers of a file may inherit, on account of the "<<" at `place`.
    /// False, told once for each file, if there are not so many left.
    bool spend_inheritance(std::size_t units, const SourcePlace& place);
    bool may_inherit(const SourcePlace& place) const;

private:
    struct Account {
        std::size_t left;
        bool is_closed = false;
    };
    Account& account(const SourcePlace& place);
    void tell(const SharedName& file, std::uint64_t line, const std::string& what);

    std::vector<SharedName> files_; ///< all so far, the present one last
    LimitSizes sizes_;
    std::size_t repetitions_left_ = 0;
    bool repetitions_told_ = false;
    std::unordered_map<const std::string*, Account> inheritance_; ///< by file
    std::set<std::pair<const std::string*, std::uint64_t>> told_;
};

} // namespace Layers
