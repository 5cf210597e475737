// Languages of data, settings and builds. Words are ordered by their first letters, capitals and
// signs behind the small ones.
#include "builder/documents/highlight/languages.h"

namespace Lumenfold::Builder {

constinit const Language JSON_CODE = {"false null true", {},         "//", "", "/*", "*/",
                                      Quotes::Both,      QUOTED_KEYS};

constinit const Language YAML = {"false no null off on true yes",
                                 {},
                                 "#",
                                 "",
                                 "",
                                 "",
                                 Quotes::Both,
                                 COLON_KEYS | COMMENT_NEEDS_BLANK | DASHED_WORDS | ANY_CASE};

constinit const Language TOML = {"false inf nan true",  {}, "#", "", "", "", Quotes::Triple,
                                 EQUALS_KEYS | SECTIONS};

constinit const Language INI = {"false no off on true yes",
                                {},
                                "#",
                                ";",
                                "",
                                "",
                                Quotes::Both,
                                EQUALS_KEYS | SECTIONS | ANY_CASE | COMMENT_NEEDS_BLANK};

constinit const Language HCL = {
    "data dynamic else false for for_each if in locals module null output provider "
    "resource terraform true variable",
    {},
    "#",
    "//",
    "/*",
    "*/",
    Quotes::Double,
    EQUALS_KEYS | CALLS};

constinit const Language NIX = {
    "assert else false if import in inherit let null or rec then true with",
    {},
    "#",
    "",
    "/*",
    "*/",
    Quotes::Double,
    DASHED_WORDS | EQUALS_KEYS};

constinit const Language CMAKE = {
    "break continue else elseif endforeach endfunction endif endmacro endwhile "
    "foreach function if include macro return set while",
    {},
    "#",
    "",
    "#[[",
    "]]",
    Quotes::Double,
    ANY_CASE | CALLS | DOLLAR_VARIABLES};

constinit const Language MAKE = {
    "define else endef endif export ifdef ifeq ifndef ifneq include override "
    "undefine vpath",
    {},
    "#",
    "",
    "",
    "",
    Quotes::None,
    TARGETS | EQUALS_KEYS | DOLLAR_VARIABLES};

constinit const Language NINJA = {"build default include pool rule subninja",
                                  {},
                                  "#",
                                  "",
                                  "",
                                  "",
                                  Quotes::None,
                                  EQUALS_KEYS | DOLLAR_VARIABLES};

constinit const Language MESON = {
    "and break continue elif else endforeach endif false foreach if in not or true",
    {},
    "#",
    "",
    "",
    "",
    Quotes::Triple,
    CALLS};

constinit const Language DOCKER = {
    "ADD ARG AS CMD COPY ENTRYPOINT ENV EXPOSE FROM HEALTHCHECK LABEL ONBUILD RUN "
    "SHELL STOPSIGNAL USER VOLUME WORKDIR",
    {},
    "#",
    "",
    "",
    "",
    Quotes::Both,
    DOLLAR_VARIABLES | COMMENT_NEEDS_BLANK};

constinit const Language LYR = {"false true", {},   "//",           "",
                                "/*",         "*/", Quotes::Double, CAPITAL_TYPES | ANNOTATIONS};

} // namespace Lumenfold::Builder
