// The input is what a builder prints.
#include "app/builder/porcelain.h"
#include "temp_folder.h"

#include <cstdint>

using namespace Lumenfold;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    VersionListing listing;
    std::size_t lines = 0;
    for (std::size_t at = 0; at < input.size(); ++lines) {
        const std::size_t end = std::min(input.find('\n', at), input.size());
        const std::string_view line = input.substr(at, end - at);
        if (const auto record = parse_porcelain(line))
            require(record->tag == line[0] && record->text == line.substr(2));
        listing.add_line(line);
        at = end + 1;
    }
    require(listing.rows.size() + listing.messages.size() <= lines);
    return 0;
}
