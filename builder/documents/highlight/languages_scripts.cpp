// Languages of scripts, shells and queries. Words are ordered by their first letters, capitals and
// signs behind the small ones.
#include "builder/documents/highlight/languages.h"

namespace Lumenfold::Builder {

constinit const Language SHELL = {
    "alias break case continue do done elif else esac export fi for function if in "
    "local readonly return select set shift source then time trap unset until while",
    {},
    "#",
    "",
    "",
    "",
    Quotes::Both,
    COMMANDS | COMMENT_NEEDS_BLANK | DOLLAR_VARIABLES};

constinit const Language POWERSHELL = {
    "begin break catch class continue data do dynamicparam else elseif end enum "
    "exit filter finally for foreach from function if in param process return "
    "switch throw trap try until using while",
    {},
    "#",
    "",
    "<#",
    "#>",
    Quotes::Doubled,
    ANY_CASE | DASHED_WORDS | DOLLAR_VARIABLES};

constinit const Language JAVASCRIPT = {
    "as async await break case catch class const continue debugger default delete "
    "do else export extends false finally for from function get if import in "
    "instanceof let new null of return set static super switch this throw true try "
    "typeof undefined var void while with yield",
    {},
    "//",
    "",
    "/*",
    "*/",
    Quotes::BothBackticks,
    CALLS | CAPITAL_TYPES | ANNOTATIONS};

constinit const Language TYPESCRIPT = {
    "abstract as asserts async await break case catch class const continue debugger "
    "declare default delete do else enum export extends false finally for from "
    "function get if implements import in infer instanceof interface is keyof let "
    "module namespace new null of override private protected public readonly return "
    "satisfies set static super switch this throw true try type typeof undefined "
    "var void while with yield",
    "any bigint boolean never number object string symbol unknown",
    "//",
    "",
    "/*",
    "*/",
    Quotes::BothBackticks,
    CALLS | CAPITAL_TYPES | ANNOTATIONS};

constinit const Language PYTHON = {
    "and as assert async await break case class continue def del elif else except "
    "finally for from global if import in is lambda match nonlocal not or pass "
    "raise return try while with yield False None True",
    "bool bytes complex dict float frozenset int list object set str tuple",
    "#",
    "",
    "",
    "",
    Quotes::Triple,
    CALLS | CAPITAL_TYPES | ANNOTATIONS};

constinit const Language RUBY = {
    "alias and begin break case class def defined? do else elsif end ensure false "
    "for if in module next nil not or redo rescue retry return self super then true "
    "undef unless until when while yield",
    {},
    "#",
    "",
    "",
    "",
    Quotes::Both,
    CALLS | CAPITAL_TYPES | AT_VARIABLES | DOLLAR_VARIABLES};

constinit const Language PERL = {
    "and cmp continue die do else elsif eq for foreach ge given gt if last le local "
    "lt my ne next no not or our package print redo require return say sub undef "
    "unless until use when while",
    {},
    "#",
    "",
    "",
    "",
    Quotes::Both,
    CALLS | DOLLAR_VARIABLES | AT_VARIABLES};

constinit const Language PHP = {
    "abstract and array as break callable case catch class clone const continue "
    "declare default do echo else elseif empty enum extends false final finally fn "
    "for foreach function global goto if implements include instanceof insteadof "
    "interface isset list match namespace new null or print private protected "
    "public readonly require require_once return static switch throw trait true try "
    "unset use var while yield",
    "bool float int iterable mixed never object string void",
    "//",
    "#",
    "/*",
    "*/",
    Quotes::Both,
    CALLS | CAPITAL_TYPES | DOLLAR_VARIABLES};

constinit const Language LUA = {
    "and break do else elseif end false for function goto if in local nil not or "
    "repeat return then true until while",
    {},
    "--",
    "",
    "--[[",
    "]]",
    Quotes::Both,
    CALLS};

constinit const Language R_CODE = {
    "break else for function if in library next repeat require return while FALSE "
    "Inf NA NULL NaN TRUE",
    {},
    "#",
    "",
    "",
    "",
    Quotes::Both,
    CALLS};

constinit const Language JULIA = {
    "abstract baremodule begin break catch const continue do else elseif end export "
    "false finally for function global if import in isa let local macro missing "
    "module mutable nothing primitive quote return struct true try type using where "
    "while",
    {},
    "#",
    "",
    "#=",
    "=#",
    Quotes::Triple,
    CALLS | CAPITAL_TYPES | ANNOTATIONS};

constinit const Language ELIXIR = {
    "after alias and case catch cond def defimpl defmacro defmodule defp "
    "defprotocol defstruct do else end false fn for if import in nil not or quote "
    "raise receive require rescue true try unless unquote use when with",
    {},
    "#",
    "",
    "",
    "",
    Quotes::Triple,
    CALLS | CAPITAL_TYPES | ANNOTATIONS};

constinit const Language LISP = {
    "and case cond def define defmacro defn defun do else fn for if in lambda let "
    "loop nil not ns or quote recur require set t true unless when",
    {},
    ";",
    "",
    "",
    "",
    Quotes::Double,
    DASHED_WORDS};

constinit const Language QML = {
    "alias as break case catch const continue default delete do else enum export "
    "false finally for function if import in let new null on pragma property "
    "readonly required return signal switch this throw true try typeof undefined "
    "var while",
    "bool color double int list real string url variant",
    "//",
    "",
    "/*",
    "*/",
    Quotes::BothBackticks,
    CALLS | CAPITAL_TYPES};

constinit const Language SQL = {
    "add all alter and as asc begin between by cascade case check column commit "
    "constraint create cross current_date current_timestamp database default delete "
    "desc distinct drop else end except exists explain false foreign from full "
    "function grant group having if in index inner insert intersect into is join "
    "key left like limit not null offset on or order outer over partition primary "
    "procedure recursive references returning right rollback select set table then "
    "transaction trigger true union unique update using values view when where with",
    "bigint blob boolean char date decimal double float int integer interval json "
    "numeric real serial smallint text time timestamp uuid varchar BIGINT BLOB "
    "BOOLEAN CHAR DATE DECIMAL DOUBLE FLOAT INT INTEGER JSON NUMERIC REAL SERIAL "
    "SMALLINT TEXT TIME TIMESTAMP UUID VARCHAR",
    "--",
    "",
    "/*",
    "*/",
    Quotes::Doubled,
    ANY_CASE | CALLS};

constinit const Language GRAPHQL = {
    "directive enum extend false fragment implements input interface mutation null "
    "on query scalar schema subscription true type union",
    {},
    "#",
    "",
    "",
    "",
    Quotes::Triple,
    CALLS | CAPITAL_TYPES | ANNOTATIONS | DOLLAR_VARIABLES};

} // namespace Lumenfold::Builder
