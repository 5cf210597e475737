#include "text_files.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>

namespace CorvelLint {

namespace fs = std::filesystem;

std::vector<fs::path> files_below(const fs::path& folder, const std::string& extension) {
    std::vector<fs::path> files;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        std::error_code unreadable;
        if (entry->is_regular_file(unreadable) && entry->path().extension() == extension)
            files.push_back(entry->path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string read_text(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::size_t line_of(std::string_view text, std::size_t at) {
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(at, text.size()));
    return static_cast<std::size_t>(std::count(text.begin(), end, '\n')) + 1;
}

} // namespace CorvelLint
