// Gives every file below the folders named to a fuzz target once: what was found stays mended, and
// what the target holds true is tried with any compiler.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** folders) {
    int files = 0;
    for (int i = 1; i < count; ++i)
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folders[i])) {
            if (!entry.is_regular_file())
                continue;
            std::printf("%s\n", entry.path().c_str());
            std::fflush(stdout); // the last one named is the one that ends the run
            std::ifstream in(entry.path(), std::ios::binary);
            const std::string text{std::istreambuf_iterator<char>(in), {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
            ++files;
        }
    std::printf("%d files\n", files);
    return files > 0 ? 0 : 1;
}
