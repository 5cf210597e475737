// Languages that are compiled, most of them kin of C. Words are ordered by their first letters,
// capitals and signs behind the small ones.
#include "builder/documents/highlight/languages.h"

namespace Lumenfold::Builder {

constinit const Language C_CODE = {
    "auto break case const constexpr continue default do else enum extern false for "
    "goto if inline nullptr register restrict return sizeof static struct switch "
    "true typedef union volatile while NULL _Alignas _Atomic _Bool _Generic "
    "_Noreturn _Static_assert",
    "bool char double float int int16_t int32_t int64_t int8_t long ptrdiff_t short "
    "signed size_t ssize_t uint16_t uint32_t uint64_t uint8_t uintptr_t unsigned "
    "void wchar_t FILE",
    "//",
    "",
    "/*",
    "*/",
    Quotes::Characters,
    CALLS | DIRECTIVES};

constinit const Language CPP = {
    "alignas alignof and asm auto break case catch class co_await co_return "
    "co_yield concept const const_cast consteval constexpr constinit continue "
    "decltype default delete do dynamic_cast else enum explicit export extern false "
    "final for friend goto if import inline module mutable namespace new noexcept "
    "not nullptr operator or override private protected public reinterpret_cast "
    "requires return sizeof static static_assert static_cast struct switch template "
    "this thread_local throw true try typedef typeid typename union using virtual "
    "volatile while xor NULL",
    "bool char char16_t char32_t char8_t double float int int16_t int32_t int64_t "
    "int8_t long ptrdiff_t short signed size_t string string_view uint16_t uint32_t "
    "uint64_t uint8_t unsigned vector void wchar_t",
    "//",
    "",
    "/*",
    "*/",
    Quotes::Characters,
    CALLS | CAPITAL_TYPES | DIRECTIVES};

constinit const Language CSHARP = {
    "abstract as async await base break case catch checked class const continue "
    "default delegate do else enum event explicit extern false finally fixed for "
    "foreach get goto if implicit in init interface internal is lock namespace new "
    "null operator out override params partial private protected public readonly "
    "record ref return sealed set sizeof static struct switch this throw true try "
    "typeof unchecked unsafe using var virtual void volatile when where while with "
    "yield",
    "bool byte char decimal double dynamic float int long nint object sbyte short "
    "string uint ulong ushort",
    "//",
    "",
    "/*",
    "*/",
    Quotes::Characters,
    CALLS | CAPITAL_TYPES | DIRECTIVES};

constinit const Language JAVA = {
    "abstract assert break case catch class const continue default do else enum "
    "extends false final finally for goto if implements import instanceof interface "
    "module native new non-sealed null package permits private protected public "
    "record return sealed static strictfp super switch synchronized this throw "
    "throws transient true try var void volatile while yield",
    "boolean byte char double float int long short",
    "//",
    "",
    "/*",
    "*/",
    Quotes::Characters,
    CALLS | CAPITAL_TYPES | ANNOTATIONS};

constinit const Language KOTLIN = {
    "abstract actual as break by catch class companion const constructor continue "
    "crossinline data do else enum expect external false final finally for fun get "
    "if import in infix init inline inner interface internal is lateinit noinline "
    "null object open operator out override package private protected public "
    "reified return sealed set super suspend tailrec this throw true try typealias "
    "val var vararg when where while",
    {},
    "//",
    "",
    "/*",
    "*/",
    Quotes::Triple,
    CALLS | CAPITAL_TYPES | ANNOTATIONS};

constinit const Language GROOVY = {
    "abstract as assert break case catch class continue def default do else enum "
    "extends false final finally for if implements import in instanceof interface "
    "new null package private protected public return static super switch this "
    "throw throws trait true try void while",
    "boolean byte char double float int long short",
    "//",
    "",
    "/*",
    "*/",
    Quotes::Triple,
    CALLS | CAPITAL_TYPES | ANNOTATIONS};

constinit const Language SCALA = {
    "abstract case catch class def do else enum export extends extension false "
    "final finally for given if implicit import lazy match new null object override "
    "package private protected return sealed super then this throw trait true try "
    "type using val var while with yield",
    {},
    "//",
    "",
    "/*",
    "*/",
    Quotes::Triple,
    CALLS | CAPITAL_TYPES | ANNOTATIONS};

constinit const Language DART = {
    "abstract as assert async await break case catch class const continue covariant "
    "default do dynamic else enum export extends extension external factory false "
    "final finally for get if implements import in interface is late library mixin "
    "new null on operator part required rethrow return sealed set show static super "
    "switch sync this throw true try typedef var void when while with yield",
    "bool double int num",
    "//",
    "",
    "/*",
    "*/",
    Quotes::Triple,
    CALLS | CAPITAL_TYPES | ANNOTATIONS};

constinit const Language GO = {
    "break case chan const continue default defer else fallthrough false for func "
    "go goto if import interface iota map nil package range return select struct "
    "switch true type var",
    "any bool byte complex128 complex64 error float32 float64 int int16 int32 int64 "
    "int8 rune string uint uint16 uint32 uint64 uint8 uintptr",
    "//",
    "",
    "/*",
    "*/",
    Quotes::GoLike,
    CALLS};

constinit const Language RUST = {
    "as async await break const continue crate dyn else enum extern false fn for if "
    "impl in let loop macro_rules match mod move mut pub ref return self static "
    "struct super trait true type union unsafe use where while Self",
    "bool char f32 f64 i128 i16 i32 i64 i8 isize str u128 u16 u32 u64 u8 usize",
    "//",
    "",
    "/*",
    "*/",
    Quotes::Characters,
    CALLS | CAPITAL_TYPES | NESTED_COMMENTS};

constinit const Language SWIFT = {
    "actor as associatedtype async await break case catch class continue "
    "convenience default defer deinit didSet do else enum extension fallthrough "
    "false fileprivate final for func get guard if import in indirect init inout "
    "internal is isolated lazy let mutating nil nonisolated open operator optional "
    "override private protocol public repeat required rethrows return self set some "
    "static struct subscript super switch throw throws true try typealias unowned "
    "var weak where while willSet Self",
    {},
    "//",
    "",
    "/*",
    "*/",
    Quotes::Triple,
    CALLS | CAPITAL_TYPES | ANNOTATIONS | NESTED_COMMENTS};

constinit const Language ZIG = {
    "align allowzero and anyframe anytype asm async await break callconv catch "
    "comptime const continue defer else enum errdefer error export extern false fn "
    "for if inline noalias null opaque or orelse packed pub resume return struct "
    "suspend switch test threadlocal true try undefined union unreachable "
    "usingnamespace var volatile while",
    "bool f32 f64 i16 i32 i64 i8 isize type u16 u32 u64 u8 usize void",
    "//",
    "",
    "",
    "",
    Quotes::Characters,
    CALLS | CAPITAL_TYPES | ANNOTATIONS};

constinit const Language HASKELL = {
    "case class data default deriving do else forall foreign if import in infix "
    "infixl infixr instance let module newtype of qualified then type where",
    {},
    "--",
    "",
    "{-",
    "-}",
    Quotes::Characters,
    CAPITAL_TYPES | NESTED_COMMENTS};

constinit const Language FORTRAN = {
    "allocatable allocate call case contains cycle deallocate do else elseif end "
    "exit function if implicit in inout intent interface module none only out "
    "parameter print private procedure program public pure read recursive result "
    "return select stop subroutine then type use where while write",
    "character complex integer logical real",
    "!",
    "",
    "",
    "",
    Quotes::Both,
    ANY_CASE | CALLS};

constinit const Language GLSL = {
    "attribute break case const continue default discard do else flat for highp if "
    "in inout invariant layout lowp mediump out precision return smooth struct "
    "switch uniform varying while",
    "bool bvec2 bvec3 bvec4 double float int ivec2 ivec3 ivec4 mat2 mat3 mat4 "
    "sampler2D samplerCube uint uvec2 uvec3 uvec4 vec2 vec3 vec4 void",
    "//",
    "",
    "/*",
    "*/",
    Quotes::None,
    CALLS | DIRECTIVES};

constinit const Language PROTO = {
    "enum extend false import map message oneof option optional package repeated "
    "required reserved returns rpc service stream syntax true",
    "bool bytes double fixed32 fixed64 float int32 int64 sfixed32 sfixed64 sint32 "
    "sint64 string uint32 uint64",
    "//",
    "",
    "/*",
    "*/",
    Quotes::Both,
    CAPITAL_TYPES | CALLS};

} // namespace Lumenfold::Builder
