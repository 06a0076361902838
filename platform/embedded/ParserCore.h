#pragma once
// ParserCore: the recursive descent itself, one member per construct; Parser*.cpp hold them by subject.

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/embedded/Ast.h"
#include "platform/embedded/Lexer.h"

namespace kv::tsql {

class Parser {
public:
    explicit Parser(const LexedBatch& lexed) : lexed_(lexed), tokens_(lexed.tokens) {}

    Batch batch();
    ExprPtr wholeCondition();
    ExprPtr wholeExpression();

private:
    using StatementParser = StmtPtr (Parser::*)();
    struct StatementWord {
        std::string_view word;
        StatementParser parse;
    };
    static const StatementWord kStatementWords[];

    // Tokens (ParserCore.cpp)
    const Token& token(std::size_t ahead = 0) const { return tokens_[std::min(at_ + ahead, tokens_.size() - 1)]; }
    Pos here() const { return token().pos; }
    bool atEnd() const { return token().kind == TokenKind::End; }
    bool isWord(std::string_view word, std::size_t ahead = 0) const;
    bool isAnyWord(std::initializer_list<std::string_view> words, std::size_t ahead = 0) const;
    bool isSymbol(char c, std::size_t ahead = 0) const {
        const Token& t = token(ahead);
        return t.kind == TokenKind::Symbol && t.symbol == static_cast<unsigned char>(c) && t.second == 0;
    }
    bool isPair(char first, char second, std::size_t ahead = 0) const;
    bool isName(std::size_t ahead = 0) const;  ///< a quoted name or a word that is not reserved
    bool isLiteral(LiteralKind kind, std::size_t ahead = 0) const;
    bool isString(std::size_t ahead = 0) const;
    bool take(std::string_view word);
    bool takeSymbol(char c);
    bool takePair(char first, char second);
    void need(std::string_view word);
    void needSymbol(char c);
    std::string word();                           ///< any word, upper case
    std::string identifier();                     ///< a name without its marks
    std::string variable();                       ///< @name
    std::size_t closing(std::size_t open) const;  ///< index of the token that closes the "(" at that index
    [[noreturn]] void fail() const { failAt(at_); }
    [[noreturn]] void failAt(std::size_t index) const;
    [[noreturn]] void refuse(std::string_view construct) const { refuse(construct, here()); }
    [[noreturn]] void refuse(std::string_view construct, Pos pos) const;

    // Names and types (ParserCore.cpp)
    ObjectName objectName();
    std::vector<std::string> nameParts();
    static ObjectName nameOf(std::vector<std::string> parts, Pos pos);
    std::vector<std::string> nameList();           ///< name, name
    std::vector<std::string> bracketedNameList();  ///< (name, name)
    TypeName typeName();
    int typeNumber();

    // Literals and pins (ParserCore.cpp)
    std::unique_ptr<LiteralExpr> literal();
    void pin(LiteralExpr& literal);
    std::string pinnedText();    ///< the text of a literal token that becomes part of the tree
    std::string textAsName();    ///< a text in the place of a name; raises 103 as a name would
    std::int64_t wholeNumber();  ///< a pinned whole number with an optional sign

    // Expressions (ParserExpr.cpp)
    ExprPtr condition();
    ExprPtr value();
    ExprPtr anything() { return disjunction(); }
    ExprPtr disjunction();
    ExprPtr conjunction();
    ExprPtr negation();
    ExprPtr predicate();
    ExprPtr predicateTail(ExprPtr left);
    ExprPtr comparison(ExprPtr left);
    ExprPtr sum();
    ExprPtr product();
    ExprPtr unary();
    ExprPtr collated();
    ExprPtr primary();
    ExprPtr parenthesised();
    ExprPtr wordExpression();
    ExprPtr nameExpression();
    ExprPtr caseExpression();
    ExprPtr castExpression(bool isTry);
    ExprPtr convertExpression(bool isTry);
    ExprPtr immediateIf();
    ExprPtr call(ObjectName name, Pos pos);
    void callArguments(CallExpr& call);
    void callTail(CallExpr& call);
    std::unique_ptr<Window> window();
    void windowFrame(Window& window);
    FrameBound frameBound(ExprPtr& count);
    std::vector<OrderItem> orderItems();
    ExprList valueList();  ///< value, value
    bool takeCompare(CompareOp& op);
    bool takeBinary(std::string_view symbols, BinaryOp& op);
    bool takeCompoundAssignment(std::optional<BinaryOp>& op);
    ExprPtr checkValue(ExprPtr expr) const;

    // Queries (ParserQuery.cpp)
    enum class QueryPlace { Statement, Inner };
    bool queryAhead() const;  ///< a query starts here, perhaps in parentheses
    QueryPtr query(QueryPlace place);
    QueryPtr bracketedQuery();
    void queryTail(Query& query, QueryPlace place);
    void checkAssignments(const Query& query) const;
    std::unique_ptr<QueryBody> queryBody();
    std::unique_ptr<QueryBody> queryTerm();
    std::unique_ptr<QueryBody> queryPrimary();
    std::unique_ptr<QueryBody> selectBody();
    void groupBy(SelectBody& body);
    Top top();
    SelectItem selectItem();
    bool assignsVariable() const;
    void itemAlias(SelectItem& item);
    std::vector<Cte> ctes();
    std::vector<TableRefPtr> fromList();
    TableRefPtr joinedTable();
    TableRefPtr joinWith(TableRefPtr left, JoinKind kind, Pos pos);
    TableRefPtr tableSource();
    TableRefPtr namedSource();
    TableRefPtr bracketedSource();
    void sourceAlias(AliasedRef& ref);
    bool takeJoin(JoinKind& kind);
    bool hintAhead() const;
    void tableHints(std::vector<std::string>& hints);
    std::vector<ExprList> valueRows();
    void optionClause();
    void skipBrackets();

    // Statements (ParserStatement.cpp)
    StmtPtr statement();
    StmtPtr statementCore();
    StmtList statements();  ///< up to END or the end of the batch
    StmtPtr withStatement();
    StmtPtr selectStatement();
    void checkReturn(const ReturnStmt& stmt) const;
    StmtPtr ifStatement();
    StmtPtr whileStatement();
    StmtPtr breakStatement();
    StmtPtr continueStatement();
    StmtPtr beginStatement();
    StmtPtr tryStatement();
    StmtPtr returnStatement();
    StmtPtr printStatement();
    StmtPtr raisErrorStatement();
    StmtPtr throwStatement();
    StmtPtr commitStatement();
    StmtPtr rollbackStatement();
    StmtPtr saveStatement();
    template <class T>
    StmtPtr transaction();
    StmtPtr declareStatement();
    Declaration declaration();
    StmtPtr setStatement();
    StmtPtr setVariable();
    StmtPtr setOption();
    StmtPtr execStatement();
    StmtPtr execCall(std::unique_ptr<ExecStmt> exec);
    void execArguments(ExecStmt& exec);
    ExecArg execArgument();
    ExprPtr execValue();
    StmtPtr useStatement();
    StmtPtr dbccStatement();
    StmtPtr declareCursor(std::string name);
    StmtPtr openStatement();
    StmtPtr closeStatement();
    StmtPtr deallocateStatement();
    StmtPtr fetchStatement();
    std::string cursorName();
    StmtPtr permissionStatement();
    StmtPtr unsupportedStatement();
    StmtPtr unsupported(std::string construct);
    StmtPtr ignored();
    StmtPtr skipped();
    void skipStatement();

    // Data changes (ParserDml.cpp)
    StmtPtr insertStatement() { return insert({}); }
    StmtPtr updateStatement();
    StmtPtr deleteStatement() { return deletion({}); }
    StmtPtr truncateStatement();
    StmtPtr insert(std::vector<Cte> with);
    void insertSource(InsertStmt& stmt);
    StmtPtr update(std::vector<Cte> with);
    Assignment assignment();
    StmtPtr deletion(std::vector<Cte> with);
    ObjectName targetName(std::string_view verb);
    std::unique_ptr<OutputClause> output();
    void whereOrCurrent(ExprPtr& where, std::string& cursor);

    // Definitions (ParserDdl.cpp, ParserModule.cpp)
    StmtPtr createStatement();
    StmtPtr createTable();
    StmtPtr createIndex();
    StmtPtr createNamed();
    StmtPtr alterStatement();
    StmtPtr alterTable();
    void alterTableDrop(AlterTableStmt& stmt);
    StmtPtr triggerSwitch();
    StmtPtr dropStatement();
    void dropIndexes(DropStmt& stmt);
    TableDef tableDef();
    void tableElement(TableDef& def);
    ColumnDef columnDef();
    bool columnOption(ColumnDef& column);
    void identity(ColumnDef& column);
    bool constraintAhead() const;
    Constraint constraint(const ColumnDef* column);
    void keyColumns(Constraint& constraint, const ColumnDef* column);
    void references(Constraint& constraint);
    std::vector<IndexColumn> indexColumns();
    void storageOptions();
    StmtPtr module(ModuleMode mode);
    void moduleHead(ModuleStmt& stmt, ModuleMode mode);
    std::vector<std::string> moduleOptions();
    StmtPtr viewModule(ModuleMode mode);
    StmtPtr procedureModule(ModuleMode mode);
    StmtPtr functionModule(ModuleMode mode);
    void functionBody(CreateFunctionStmt& stmt);
    QueryPtr inlineQuery();
    StmtPtr triggerModule(ModuleMode mode);
    std::vector<Parameter> parameters();
    Parameter parameter();

    template <class T>
    std::unique_ptr<T> make() const {
        auto node = std::make_unique<T>();
        node->pos = here();
        return node;
    }

    /// Where a statement stands, for the statements that are not allowed everywhere.
    enum class Body { Batch, Procedure, ScalarFunction, TableFunction, Trigger };

    const LexedBatch& lexed_;
    const std::vector<Token>& tokens_;
    std::size_t at_ = 0;
    Batch batch_;
    Body body_ = Body::Batch;
    int loops_ = 0;
    int depth_ = 0;        ///< nesting of expressions, queries and blocks
    int pinAll_ = 0;       ///< above 0 every literal is pinned (definitions)
    bool module_ = false;  ///< literals have no index
    friend class DepthGuard;
};

/// Counts nesting, so that a hostile text ends in error 191 and not in an exhausted stack.
class DepthGuard {
public:
    explicit DepthGuard(Parser& parser);
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;
    ~DepthGuard() { --parser_.depth_; }

private:
    Parser& parser_;
};

}  // namespace kv::tsql
