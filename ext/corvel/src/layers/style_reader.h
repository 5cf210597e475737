#pragma once

#include "layers/node_style.h"

#include <memory>
#include <string>
#include <vector>

namespace Layers {

class LLayer;

/// Reads every known attribute of `layer` under `active_states`. A null layer gives the defaults.
Corvel::NodeStyle read_node_style(const LLayer* layer,
                                  const std::vector<std::string>& active_states);

/// Reads the style of one layer again and again, for other states or after values have changed. It
/// finds the layer's known attributes once and after that reads these alone; a change of the
/// tree's links, names or children makes it look again by itself. Results are those of
/// `read_node_style`. The layer must outlive the reader.
class StyleReader {
public:
    /// A null layer gives the defaults.
    explicit StyleReader(const LLayer* layer);

    ~StyleReader();
    StyleReader(StyleReader&&) noexcept;
    StyleReader& operator=(StyleReader&&) noexcept;

    Corvel::NodeStyle read(const std::vector<std::string>& active_states) const;

private:
    struct Plan;
    std::unique_ptr<Plan> plan_;
};

} // namespace Layers
