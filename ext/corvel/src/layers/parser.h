#pragma once

#include "layers/diagnostic.h"
#include "layers/syntax_tree.h"
#include "layers/token_stream.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Layers {

/// Turns the tokens of one `.lyr` file into its syntax tree, by recursive descent with a function
/// for each rule of the grammar. No error ends the parse. It resumes
///
/// - behind the next line end, after a statement that cannot be understood,
/// - behind the dedent that closes the block, after a block that does not end where it should,
/// - on the spot where only a single token is missing.
///
/// The tree is fit for use only if there are no diagnostics. Layers may nest to any depth: their
/// blocks are kept on a stack of the parser's own. One parser serves one file.
class Parser {
public:
    explicit Parser(TokenStream tokens);
    explicit Parser(std::vector<Token> tokens)
        : Parser(TokenStream(std::move(tokens))) {}
    /// Takes the tokens from the lexer while it parses; its diagnostics are complete afterwards.
    explicit Parser(Lexer& lexer)
        : Parser(TokenStream(lexer)) {}

    /// Parses all tokens. The tree refers to the text behind them. To be called once.
    FileNode parse_file();
    /// The problems found by `parse_file`, in order.
    const std::vector<Diagnostic>& diagnostics() const { return diagnostics_; }

private:
    enum class BlockKind { LayerDefinition, StateSet, GroupSet };

    /// Where the lists of a node under construction begin in the pending ones.
    struct Marks {
        std::size_t layers = 0;
        std::size_t attributes = 0;
        std::size_t group_sets = 0;
        std::size_t state_sets = 0;
    };
    struct OpenLayer {
        LayerNode node;
        Marks marks;
    };

    // Statements and blocks.
    bool parse_statement();
    bool parse_layer_definition(const DeclarationName& declaration);
    void parse_state_set();
    void parse_state_set_statement();
    GroupSetNode parse_group_set(const DeclarationName& declaration, bool in_state_set);
    void parse_group_set_statement();
    void drop_attributes_with_states(std::size_t first);
    AttributeNode parse_attribute(const DeclarationName& declaration);
    std::span<const StateNode> parse_inline_states();
    std::span<const StateNode> parse_indented_states();
    StateNode parse_state();
    std::span<const std::string_view> parse_state_names();

    void begin_layer(const LayerNode& node);
    void finish_layer();
    bool enter_block();
    void leave_block(BlockKind kind);
    void ensure_progress(std::size_t start, std::string_view construct);
    template <class Statement>
    void parse_block(BlockKind kind, Statement statement);

    // Names.
    DeclarationName parse_declaration_name();
    void parse_grouped_name(DeclarationName& declaration);
    void keep_traversal(std::size_t first_segment);
    NameNode parse_name();
    NamePart parse_expansion();
    std::string_view parse_alternative();
    ReferenceNode parse_reference();
    std::string_view plain_text(const NameNode& name);

    // Values.
    ValueNode parse_expression();
    double number_value(std::string_view text);
    std::string_view string_value(std::string_view text);

    // The token cursor.
    const Token& peek() const { return tokens_.peek(); }
    const Token& peek_next() const { return tokens_.peek_next(); }
    bool at(TokenKind kind) const { return peek().kind == kind; }
    void advance() { tokens_.advance(); }
    bool expect(TokenKind kind);
    void skip_line();
    void skip_block();

    void report(std::string message);
    void report_at(std::uint64_t line, std::string message);
    void report_unexpected(std::string_view remedy);

    // The tree's memory.
    template <class Node>
    std::span<const Node> store(std::vector<Node>& pending, std::size_t first);
    std::string_view join_words(std::size_t first);
    std::string_view copy_joined(std::span<const std::string_view> words);
    char* allocate_text(std::size_t size);

    TokenStream tokens_;
    std::vector<Diagnostic> diagnostics_;
    std::unique_ptr<std::pmr::monotonic_buffer_resource> storage_;

    // Nodes whose lists are still growing; each construct takes off what it put on.
    std::vector<OpenLayer> open_layers_;
    std::vector<LayerNode> pending_layers_;
    std::vector<AttributeNode> pending_attributes_;
    std::vector<GroupSetNode> pending_group_sets_;
    std::vector<StateSetNode> pending_state_sets_;
    std::vector<StateNode> pending_states_;
    std::vector<NameNode> pending_names_;
    std::vector<NamePart> pending_parts_;
    std::vector<std::string_view> pending_texts_;
};

/// Moves the pending nodes from index `first` on into the tree's memory.
template <class Node>
std::span<const Node> Parser::store(std::vector<Node>& pending, std::size_t first) {
    const std::size_t count = pending.size() - first;
    if (count == 0)
        return {};
    void* const memory = storage_->allocate(count * sizeof(Node), alignof(Node));
    Node* const nodes = static_cast<Node*>(memory);
    std::uninitialized_copy_n(pending.data() + first, count, nodes);
    pending.resize(first);
    return {nodes, count};
}

/// How a token is written in a message: its text between backticks, or the word for its kind.
std::string describe_token(const Token& token);

} // namespace Layers
