# What the application needs beyond Corvel's own dependencies.
if(LUMENFOLD_BENCH)
    find_package(benchmark REQUIRED)
endif()

# The two functions by the application's name.
macro(lumenfold_qt_target target)
    corvel_qt_target(${target})
endmacro()
macro(lumenfold_require_qt_free target)
    corvel_require_qt_free(${target})
endmacro()
