#pragma once

#include "layers/load_limits.h"
#include "layers/object_model.h"

#include <filesystem>
#include <memory>
#include <string>

namespace Layers {

class BuildObserver;

/// Owns the root of the style tree and loads directories of `.lyr` files into it. Problems go to
/// the log (layers/log.h); a file with any is dropped whole and the load goes on.
class LayersEngine {
public:
    /// The observer, which may be null, hears of every declaration as it is loaded.
    explicit LayersEngine(BuildObserver* observer = nullptr);
    ~LayersEngine();

    /// The root layer; its name is empty.
    LLayer& root() const;
    /// Null when missing.
    LLayer* find_layer(const std::string& path) const;
    /// Loads the style files below `path` in order into the layer of the path `layer` (the root if
    /// empty), which is created if missing, then composes inheritance.
    void load_directory(const std::filesystem::path& path, const std::string& layer);
    /// Resolves every attribute link of the tree. Called once, after the last directory.
    void link_attributes();

private:
    LoadLimits limits_;
    std::unique_ptr<LLayer> root_;
    BuildObserver* observer_;
};

} // namespace Layers
