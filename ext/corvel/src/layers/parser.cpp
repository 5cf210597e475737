#include "layers/parser.h"

#include <algorithm>
#include <utility>

namespace Layers {
namespace {

constexpr std::size_t STORAGE_CHUNK = 64 * 1024;

bool is_none(const ValueNode& value) {
    const auto* literal = std::get_if<LiteralValue>(&value);
    return literal != nullptr && std::holds_alternative<std::monostate>(*literal);
}

} // namespace

std::string describe_token(const Token& token) {
    if (token.kind <= TokenKind::Inherit)
        return "`" + std::string(token.text) + "`";
    switch (token.kind) {
    case TokenKind::Indent:
        return "indent";
    case TokenKind::Dedent:
        return "dedent";
    case TokenKind::LineEnd:
        return "line end";
    case TokenKind::EndOfFile:
        return "end of file";
    case TokenKind::Error:
        return "error";
    default:
        return "unknown";
    }
}

Parser::Parser(TokenStream tokens)
    : tokens_(std::move(tokens))
    , storage_(std::make_unique<std::pmr::monotonic_buffer_resource>(STORAGE_CHUNK)) {}

// file: statement* EndOfFile
FileNode Parser::parse_file() {
    begin_layer({});
    while (open_layers_.size() > 1 || !at(TokenKind::EndOfFile)) {
        const std::size_t start = tokens_.position();
        if (parse_statement())
            continue; // the first statement of the block just entered follows
        ensure_progress(start, open_layers_.size() > 1 ? "layer definition" : "file statement");
        while (open_layers_.size() > 1 && (at(TokenKind::Dedent) || at(TokenKind::EndOfFile))) {
            leave_block(BlockKind::LayerDefinition);
            finish_layer();
        }
    }
    finish_layer();
    FileNode file;
    static_cast<LayerNode&>(file) = pending_layers_.back();
    file.storage = std::move(storage_);
    return file;
}

// statement: state-set | group-set | attribute | layer-definition. True if a layer's block was
// entered, whose statements are to come.
bool Parser::parse_statement() {
    if (at(TokenKind::At)) {
        parse_state_set();
        return false;
    }
    const DeclarationName declaration = parse_declaration_name();
    if (!declaration.name.empty()) {
        // A colon with a value on its line makes an attribute, one at the end of it a layer.
        if (!at(TokenKind::Colon) || peek_next().kind == TokenKind::LineEnd)
            return parse_layer_definition(declaration);
        pending_attributes_.push_back(parse_attribute(declaration));
    } else if (!declaration.group.empty()) {
        pending_group_sets_.push_back(parse_group_set(declaration, false));
    } else {
        report("Expected a name.");
        skip_line();
    }
    return false;
}

// layer-definition: declaration-name (Inherit reference)? (Colon block(statement) | LineEnd)
bool Parser::parse_layer_definition(const DeclarationName& declaration) {
    LayerNode layer;
    layer.declaration = declaration;
    if (expect(TokenKind::Inherit)) {
        if (at(TokenKind::Name))
            layer.base = parse_reference();
        else
            report_unexpected("expected reference after `<<`.");
    }
    if (expect(TokenKind::Colon)) {
        if (enter_block()) {
            begin_layer(layer);
            return true;
        }
    } else if (!expect(TokenKind::LineEnd)) {
        report_unexpected("expected line end after layer declaration.");
        skip_line();
    }
    pending_layers_.push_back(layer);
    return false;
}

void Parser::begin_layer(const LayerNode& node) {
    open_layers_.push_back({node,
                            {pending_layers_.size(), pending_attributes_.size(),
                             pending_group_sets_.size(), pending_state_sets_.size()}});
}

void Parser::finish_layer() {
    auto [node, marks] = open_layers_.back();
    open_layers_.pop_back();
    node.layers = store(pending_layers_, marks.layers);
    node.attributes = store(pending_attributes_, marks.attributes);
    node.group_sets = store(pending_group_sets_, marks.group_sets);
    node.state_sets = store(pending_state_sets_, marks.state_sets);
    pending_layers_.push_back(node);
}

// state-set: At state-names Colon block(state-set-statement)
void Parser::parse_state_set() {
    advance();
    StateSetNode set;
    set.states = parse_state_names();
    if (!expect(TokenKind::Colon))
        report_unexpected("expected `:` after state-set states.");
    const std::size_t first_attribute = pending_attributes_.size();
    const std::size_t first_group_set = pending_group_sets_.size();
    parse_block(BlockKind::StateSet, [this] { parse_state_set_statement(); });
    set.attributes = store(pending_attributes_, first_attribute);
    set.group_sets = store(pending_group_sets_, first_group_set);
    pending_state_sets_.push_back(set);
}

// state-set-statement: attribute without states | group-set whose attributes are without states
void Parser::parse_state_set_statement() {
    const DeclarationName declaration = parse_declaration_name();
    if (!declaration.name.empty()) {
        const AttributeNode attribute = parse_attribute(declaration);
        if (attribute.states.empty())
            pending_attributes_.push_back(attribute);
        else
            report_at(declaration.name.line, "Found invalid inline state in state-set attribute.");
    } else if (!declaration.group.empty()) {
        pending_group_sets_.push_back(parse_group_set(declaration, true));
    } else {
        report("Expected a name.");
        skip_line();
    }
}

// group-set: traversal? group Dot block(group-set-statement)
GroupSetNode Parser::parse_group_set(const DeclarationName& declaration, bool in_state_set) {
    const std::size_t first = pending_attributes_.size();
    parse_block(BlockKind::GroupSet, [this] { parse_group_set_statement(); });
    if (in_state_set)
        drop_attributes_with_states(first);
    return {declaration, store(pending_attributes_, first)};
}

void Parser::drop_attributes_with_states(std::size_t first) {
    const auto has_states = [this](const AttributeNode& attribute) {
        if (attribute.states.empty())
            return false;
        report_at(attribute.declaration.name.line,
                  "Found invalid inline state in group-set attribute within a state-set.");
        return true;
    };
    const auto begin = pending_attributes_.begin() + static_cast<std::ptrdiff_t>(first);
    const auto kept_end = std::remove_if(begin, pending_attributes_.end(), has_states);
    pending_attributes_.erase(kept_end, pending_attributes_.end());
}

// group-set-statement: declaration-name of a bare name, then the rest of attribute
void Parser::parse_group_set_statement() {
    const DeclarationName declaration = parse_declaration_name();
    if (!declaration.traversal.empty())
        report("Found invalid traversal in group-set attribute declaration.");
    if (!declaration.group.empty())
        report("Found invalid group in group-set attribute declaration.");
    const AttributeNode attribute = parse_attribute(declaration);
    if (declaration.traversal.empty() && declaration.group.empty())
        pending_attributes_.push_back(attribute);
}

// attribute: declaration-name Colon expression attribute-tail
AttributeNode Parser::parse_attribute(const DeclarationName& declaration) {
    AttributeNode attribute;
    attribute.declaration = declaration;
    if (declaration.name.empty())
        report("Expected an attribute name.");
    if (!expect(TokenKind::Colon)) {
        report_unexpected("expected a colon `:` after attribute declaration.");
        skip_line();
        return attribute;
    }
    attribute.value = parse_expression();
    if (is_none(attribute.value)) {
        skip_line();
    } else if (at(TokenKind::At)) {
        attribute.states = parse_inline_states();
    } else if (at(TokenKind::LineEnd) && peek_next().kind == TokenKind::Indent) {
        attribute.states = parse_indented_states();
    } else if (!expect(TokenKind::LineEnd)) {
        report_unexpected("expected a line end after attribute.");
        skip_line();
    }
    return attribute;
}

// attribute-tail: state state* LineEnd | ...
std::span<const StateNode> Parser::parse_inline_states() {
    const std::size_t first = pending_states_.size();
    while (at(TokenKind::At))
        pending_states_.push_back(parse_state());
    if (!expect(TokenKind::LineEnd)) {
        report_unexpected("expected a line end after inline states.");
        skip_line();
    }
    return store(pending_states_, first);
}

// attribute-tail: ... | LineEnd Indent (state LineEnd)* Dedent | LineEnd
std::span<const StateNode> Parser::parse_indented_states() {
    advance();
    advance();
    const std::size_t first = pending_states_.size();
    while (at(TokenKind::At)) {
        pending_states_.push_back(parse_state());
        if (!expect(TokenKind::LineEnd))
            report_unexpected("expected a line end after indented state.");
    }
    if (!expect(TokenKind::Dedent)) {
        report_unexpected("expected dedent to close block of states.");
        skip_block();
    }
    return store(pending_states_, first);
}

// state: At state-names Colon expression
StateNode Parser::parse_state() {
    advance();
    StateNode state;
    state.states = parse_state_names();
    if (!expect(TokenKind::Colon))
        report_unexpected("expected `:` after state's state names.");
    state.value = parse_expression();
    return state;
}

// state-names: Name (Ampersand Name)*
std::span<const std::string_view> Parser::parse_state_names() {
    const std::size_t first = pending_texts_.size();
    do {
        if (at(TokenKind::Name)) {
            pending_texts_.push_back(peek().text);
            advance();
        } else {
            report_unexpected("expected a state name.");
        }
    } while (expect(TokenKind::Ampersand));
    return store(pending_texts_, first);
}

// block(X): LineEnd Indent X X* Dedent
template <class Statement>
void Parser::parse_block(BlockKind kind, Statement statement) {
    if (!enter_block())
        return;
    do {
        const std::size_t start = tokens_.position();
        statement();
        ensure_progress(start, kind == BlockKind::StateSet ? "state-set" : "group-set");
    } while (!at(TokenKind::Dedent) && !at(TokenKind::EndOfFile));
    leave_block(kind);
}

bool Parser::enter_block() {
    if (!at(TokenKind::LineEnd) || peek_next().kind != TokenKind::Indent) {
        report_unexpected("expected indented attributes.");
        skip_line();
        return false;
    }
    advance();
    advance();
    return true;
}

void Parser::leave_block(BlockKind kind) {
    if (expect(TokenKind::Dedent))
        return;
    const char* const name = kind == BlockKind::LayerDefinition ? "layer definition"
                             : kind == BlockKind::StateSet      ? "state-set"
                                                                : "group-set";
    report_unexpected("expected dedent to close " + std::string(name) + ".");
    skip_block();
}

void Parser::ensure_progress(std::size_t start, std::string_view construct) {
    if (tokens_.position() != start)
        return;
    report("Failed to progress parsing " + std::string(construct) +
           "; proceeding unconditionally.");
    advance();
}

bool Parser::expect(TokenKind kind) {
    if (!at(kind))
        return false;
    advance();
    return true;
}

void Parser::skip_line() {
    while (!at(TokenKind::LineEnd) && !at(TokenKind::EndOfFile))
        advance();
    expect(TokenKind::LineEnd);
}

void Parser::skip_block() {
    for (std::size_t depth = 1; depth > 0 && !at(TokenKind::EndOfFile); advance()) {
        if (at(TokenKind::Indent))
            ++depth;
        else if (at(TokenKind::Dedent))
            --depth;
    }
}

void Parser::report(std::string message) {
    diagnostics_.push_back({peek().line, std::move(message), peek().text});
}

void Parser::report_at(std::uint64_t line, std::string message) {
    diagnostics_.push_back({line, std::move(message), {}});
}

void Parser::report_unexpected(std::string_view remedy) {
    report("Found unexpected " + describe_token(peek()) + "; " + std::string(remedy));
}

} // namespace Layers
