// Writes the sample site into a folder, to be looked at: page_preview FOLDER [THEME [OTHER
// [LANG]]].
#include "sample_site.h"

#include <filesystem>
#include <fstream>
#include <iostream>

int main(int count, char** arguments) {
    if (count < 2) {
        std::cerr << "page_preview FOLDER [THEME [OTHER [LANGUAGE]]]\n";
        return 2;
    }
    Lumenfold::Builder::SampleLook look;
    if (count > 2)
        look.theme = arguments[2];
    if (count > 3)
        look.other = arguments[3];
    if (count > 4)
        look.language = arguments[4];
    const std::filesystem::path folder = arguments[1];
    for (const auto& asset : Lumenfold::Builder::sample_site(look)) {
        std::filesystem::create_directories((folder / asset.path).parent_path());
        std::ofstream(folder / asset.path, std::ios::binary) << asset.bytes;
    }
    std::filesystem::copy(std::filesystem::path(SOURCE_ROOT) / "examples/tidewater/images",
                          folder / "images",
                          std::filesystem::copy_options::recursive |
                              std::filesystem::copy_options::overwrite_existing);
}
