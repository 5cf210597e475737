# The libraries that Corvel uses. An application that uses them too includes this in its own
# directory: what find_package finds is known in the directory of the call and below.
include_guard(GLOBAL)

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets Network Svg Multimedia)
find_package(nlohmann_json 3.11.2 REQUIRED)

# qrcodegen ships neither a CMake package nor a usable pkg-config file.
find_path(QRCODEGEN_INCLUDE_DIR qrcodegen/qrcodegen.hpp REQUIRED)
find_library(QRCODEGEN_LIBRARY qrcodegencpp REQUIRED)
add_library(qrcodegen::qrcodegen UNKNOWN IMPORTED)
set_target_properties(qrcodegen::qrcodegen PROPERTIES
    IMPORTED_LOCATION "${QRCODEGEN_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${QRCODEGEN_INCLUDE_DIR}")
