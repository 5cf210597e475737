// Loads any bytes as style files and uses what comes of them: a zero byte ends a file, the second
// file is loaded on top of the first. Styles are read in two states, and a value that other
// attributes may link to is changed.

#include "layers/engine.h"
#include "layers/log.h"
#include "layers/style_reader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

/// A folder that lives as long as the process.
class Folder {
public:
    Folder()
        : path_(std::filesystem::temp_directory_path() /
                ("layers-fuzzer-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(path_ / "first");
        std::filesystem::create_directories(path_ / "second");
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    std::filesystem::path write(const char* name, std::string_view text) const {
        std::ofstream(path_ / name / "styles.lyr", std::ios::binary) << text;
        return path_ / name;
    }

private:
    std::filesystem::path path_;
};

void use(Layers::LObject& object, int depth) {
    if (const Layers::LLayer* layer = object.as_layer()) {
        const Layers::StyleReader reader(layer);
        for (const auto& states : {std::vector<std::string>{}, {"Mobile", "Hover"}})
            if (reader.read(states) != Layers::read_node_style(layer, states))
                std::abort();
    }
    if (Layers::LAttribute* attribute = object.as_attribute(); attribute && !attribute->has_link())
        attribute->set_value(Layers::AttributeValue(1.5));
    if (depth > 0)
        for (const auto& child : object.children())
            use(*child, depth - 1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    static const Layers::LogSink silent = Layers::set_log_sink([](const std::string&) {});
    const std::string_view source(reinterpret_cast<const char*>(data), size);
    const std::size_t end = source.find('\0');
    Layers::LayersEngine engine;
    engine.load_directory(folder.write("first", source.substr(0, end)), "App");
    if (end != source.npos)
        engine.load_directory(folder.write("second", source.substr(end + 1)), "");
    engine.link_attributes();
    use(engine.root(), 4);
    return 0;
}
