#pragma once
// Interp: runs batches, procedures, functions and triggers statement by statement.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/data/Recordset.h"
#include "platform/embedded/Emitter.h"
#include "platform/embedded/Plan.h"
#include "platform/embedded/Quick.h"
#include "platform/embedded/Routines.h"
#include "platform/embedded/Session.h"

namespace kv::tsql {

/// The error that ERROR_NUMBER() and its like tell inside a CATCH.
using CaughtError = SqlError;

struct Cursor;

/// One running batch, procedure, function or trigger body.
struct Frame {
    Frame* caller = nullptr;
    const VariableScope* scope = nullptr;
    std::vector<Datum> variables;
    std::string database;
    std::string procedure;                           ///< empty for a batch
    std::int64_t objectId = 0;                       ///< @@PROCID
    const std::vector<Literal>* literals = nullptr;  ///< of a batch
    CompiledBatch* batch = nullptr;
    std::vector<std::pair<std::string, LocalTable*>> locals;  ///< lower-case names
    std::vector<std::shared_ptr<Cursor>> cursors;
    std::optional<std::int64_t> scopeIdentity;
    std::optional<Datum> returned;
    Type returnType = Type::integer();
    bool function = false;  ///< statements may not change or return anything outside
    bool trigger = false;
    bool barrier = false;  ///< names of callers are not seen (functions)
};

/// Where the rows of a statement without a target go.
class Sink {
public:
    virtual ~Sink() = default;
    /// `shown` is kept with the columns: the client's description of them, made at the first run.
    virtual void begin(const std::vector<OutColumn>& columns, FieldList& shown) = 0;
    virtual void row(sqlite3_stmt* stmt, const std::vector<OutColumn>& columns) = 0;
};

enum class Flow { Normal, Break, Continue, Return };

/// The batch ends here; its message is sent already.
struct BatchAborted {};

class Interp : public EmitHost {
public:
    explicit Interp(Session& session);
    ~Interp() override;

    /// Runs one batch. Gives false when any message was an error.
    bool runBatch(std::string_view text, std::vector<ResultSet>& results, std::vector<DbError>& messages);
    std::vector<DbError> compileOnly(std::string_view text);
    long long affected() const { return affected_; }

    // EmitHost
    const Catalog& catalog() const override { return session_.catalog; }
    ObjectPtr localTable(std::string_view name) override;
    std::string scalarFunction(const ObjectPtr& function) override;
    std::string tableFunction(const ObjectPtr& function) override;
    /// Makes the catalogue's functions known to SQLite: the CHECKs of its tables call them.
    void knowFunctions();
    const Module& moduleOf(const Object& object) override;
    const Expr& expressionOf(const std::string& text, bool condition) override;
    std::string literalText(int index) override;
    void pin(int index) override;

    /// Scalar function called by SQLite; raises SqlError.
    Datum callFunction(const ObjectPtr& function, std::vector<Datum> arguments);
    /// Rows of a table function called by SQLite.
    std::vector<std::vector<Datum>> callTableFunction(const std::string& key, std::vector<Datum> arguments);
    const Datum& liveVariable(int index) const { return frame_->variables[static_cast<std::size_t>(index)]; }
    bool capturing(std::int64_t table) const { return capture_ == table; }
    void forgetLocals(const std::vector<LocalTable*>& gone);
    Session& session() { return session_; }

    // Used by Ddl.
    Frame& frame() { return *frame_; }
    void addLocal(const std::string& name, LocalTable* table);
    LocalTable* findLocal(std::string_view name) const;
    void dropLocal(LocalTable* table);
    Datum evaluate(const Expr& expr, const Type& type);
    void message(const SqlError& error);

private:
    class QuickFrame;

    // Interp.cpp
    bool runCompiled(std::string_view text);
    std::shared_ptr<CompiledBatch> compiled(LexedBatch& lexed);
    std::shared_ptr<CompiledBatch> compile(std::string_view text, LexedBatch& lexed);
    Flow statements(const StmtList& list);
    Flow statement(const Stmt& stmt);
    Flow dispatch(const Stmt& stmt);
    Flow failed(const Stmt& stmt, SqlError error);
    Flow whileLoop(const WhileStmt& loop);
    Flow tryCatch(const TryCatchStmt& block);
    Flow returnFrom(const ReturnStmt& stmt);
    void declare(const DeclareStmt& stmt);
    void setVariable(const SetVariableStmt& stmt);
    void setOption(const SetOptionStmt& stmt);
    void print(const PrintStmt& stmt);
    void raiseError(const RaisErrorStmt& stmt);
    [[noreturn]] void throwError(const ThrowStmt& stmt);
    void transaction(const Stmt& stmt);
    void use(const UseStmt& stmt);
    bool insideTry() const { return tryDepth_ > 0; }

    // InterpRun.cpp
    bool test(const Expr& condition);
    Truth ask(const Expr& condition);  ///< by a statement
    Plan& valuePlan(const Expr& expr, const Type* type, bool condition);
    bool valid(const Plan& plan);
    void bind(sqlite3_stmt* stmt, const Plan& plan, bool steady);
    Datum slotValue(const Slot& slot);
    Datum systemDatum(SystemValue value);
    SqlError failure(sqlite3_stmt* stmt, const ObjectPtr& target, const char* verb);
    bool step(sqlite3_stmt* stmt, const ObjectPtr& target = nullptr, const char* verb = "");
    void select(const SelectStmt& stmt);
    void selectInto(const SelectStmt& stmt, const SelectBody& body);
    void assign(Plan& plan, const std::vector<std::size_t>& indexes);
    void insert(const InsertStmt& stmt);
    void insertExec(const InsertStmt& stmt);
    void change(const Stmt& stmt);
    void runDml(DmlPlan& plan, const char* verb);
    void runDmlPlain(DmlPlan& plan, const char* verb);
    void truncate(const TruncateStmt& stmt);
    void noteIdentity(const DmlPlan& plan, int rows);
    void checkIdentityInsert(const DmlPlan& plan);
    int runBefore(DmlPlan& plan);

    // InterpCursor.cpp
    void cursorStatement(const Stmt& stmt);
    std::shared_ptr<Cursor> cursorNamed(const std::string& name) const;
    void declareCursor(const DeclareCursorStmt& stmt);
    void openCursor(const std::string& name);
    void fetchCursor(const FetchCursorStmt& stmt);

    // InterpTrigger.cpp
    void runWithTriggers(DmlPlan& plan, const char* verb, const std::vector<ObjectPtr>& triggers);
    const Capture& captureOf(const Object& table);
    std::vector<ObjectPtr> firingOf(const std::vector<ObjectPtr>& triggers, const char* verb);
    void runTrigger(const ObjectPtr& trigger);

    // InterpHost.cpp
    void compileList(const StmtList& list);
    void compileOne(const Stmt& stmt);
    void compileStatement(const Stmt& stmt);
    void compileSelect(const SelectStmt& select);
    void compileDml(const Stmt& stmt);
    void compileTable(const Stmt& stmt);
    void compileControl(const Stmt& stmt);
    void compileExpr(const Expr& expr, bool condition);
    void compileExec(const ExecStmt& stmt);
    void compileModule(const ModuleStmt& stmt);
    void compileTrigger(const Object& trigger, const Module& module);
    void prepareOnly(Plan& plan);

    // InterpCall.cpp
    void exec(const ExecStmt& stmt);
    ObjectPtr procedureOf(const ExecStmt& stmt, const ObjectName& name);
    void execString(const ExecStringStmt& stmt);
    void runNested(const std::string& text, const std::vector<VariableInfo>& parameters, std::vector<Datum>& values);
    bool systemProcedure(const ExecStmt& stmt, const std::string& name);
    void executeSql(const ExecStmt& stmt);
    Datum argumentValue(const Expr& expr, const Type& type);
    void bindArguments(const ExecStmt& stmt, const Module& module, const std::string& name, Frame& frame,
                       std::vector<std::pair<int, std::size_t>>& outputs);
    Datum parameterDefault(const Parameter& parameter, const Type& type);
    void enter(Frame& frame);
    void leave(Frame& frame);

    Session& session_;
    LexedBatch lexed_;  ///< of the last batch: its memory is used again
    Frame root_;        ///< owns the #tables that outlive a batch
    Frame* frame_ = nullptr;
    int depth_ = 0;
    int fetchStatus_ = 0;  ///< @@FETCH_STATUS
    int tryDepth_ = 0;
    int rowCount_ = 0;
    int lastError_ = 0;
    long long affected_ = -1;
    std::vector<CaughtError> caught_;
    Sink* sink_ = nullptr;
    std::vector<DbError>* messages_ = nullptr;
    bool anyError_ = false;
    bool simpleBatch_ = false;
    bool insertingExec_ = false;
    std::int64_t capture_ = 0;
    ObjectPtr inserted_;  ///< of the running trigger
    ObjectPtr deleted_;
    bool triggerFailed_ = false;  ///< the error on its way came out of a trigger: the transaction is lost
    std::vector<std::int64_t> activeTriggers_;
    std::string now_;
};

}  // namespace kv::tsql
