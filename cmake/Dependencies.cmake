find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets Network Svg Multimedia)
find_package(nlohmann_json 3.11.2 REQUIRED)

# qrcodegen ships neither a CMake package nor a usable pkg-config file.
find_path(QRCODEGEN_INCLUDE_DIR qrcodegen/qrcodegen.hpp REQUIRED)
find_library(QRCODEGEN_LIBRARY qrcodegencpp REQUIRED)
add_library(qrcodegen::qrcodegen UNKNOWN IMPORTED)
set_target_properties(qrcodegen::qrcodegen PROPERTIES
    IMPORTED_LOCATION "${QRCODEGEN_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${QRCODEGEN_INCLUDE_DIR}")

if(LUMENFOLD_TESTS)
    find_package(GTest REQUIRED)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
    include(GoogleTest)
endif()
if(LUMENFOLD_BENCH)
    find_package(benchmark REQUIRED)
endif()

# What every Qt target gets: moc, and no silent conversions between bytes and QString.
function(lumenfold_qt_target target)
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    target_compile_definitions(${target} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
        QT_NO_KEYWORDS QT_NO_FOREACH)
endfunction()
