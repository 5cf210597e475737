#pragma once

#include "builder/documents/highlight/language.h"

namespace Lumenfold::Builder {

extern const Language C_CODE;
extern const Language CPP;
extern const Language CSHARP;
extern const Language JAVA;
extern const Language KOTLIN;
extern const Language GROOVY;
extern const Language SCALA;
extern const Language DART;
extern const Language GO;
extern const Language RUST;
extern const Language SWIFT;
extern const Language ZIG;
extern const Language HASKELL;
extern const Language FORTRAN;
extern const Language GLSL;
extern const Language PROTO;

extern const Language SHELL;
extern const Language POWERSHELL;
extern const Language JAVASCRIPT;
extern const Language TYPESCRIPT;
extern const Language PYTHON;
extern const Language RUBY;
extern const Language PERL;
extern const Language PHP;
extern const Language LUA;
extern const Language R_CODE;
extern const Language JULIA;
extern const Language ELIXIR;
extern const Language LISP;
extern const Language QML;
extern const Language SQL;
extern const Language GRAPHQL;

extern const Language JSON_CODE;
extern const Language YAML;
extern const Language TOML;
extern const Language INI;
extern const Language HCL;
extern const Language NIX;
extern const Language CMAKE;
extern const Language MAKE;
extern const Language NINJA;
extern const Language MESON;
extern const Language DOCKER;
extern const Language LYR;

} // namespace Lumenfold::Builder
