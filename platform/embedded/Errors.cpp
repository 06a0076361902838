#include "platform/embedded/Errors.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/embedded/Conversions.h"
#include "platform/embedded/SqlError.h"

namespace kv::tsql {
namespace {

/// Sorted by number; one row a line.
constexpr ErrorText kTexts[] = {
    {102, 15, "Incorrect syntax near '%s'."},
    {103, 15, "The identifier that starts with '%s' is too long. Maximum length is 128."},
    {104, 16,
     "ORDER BY items must appear in the select list if the statement contains a UNION, INTERSECT or EXCEPT operator."},
    {105, 15, "Unclosed quotation mark after the character string '%s'."},
    {107, 15, "The column prefix '%s' does not match with a table name or alias name used in the query."},
    {108, 15, "The ORDER BY position number %d is out of range of the number of items in the select list."},
    {109, 15,
     "There are more columns in the INSERT statement than values specified in the VALUES clause. The number of values "
     "in the VALUES clause must match the number of columns specified in the INSERT statement."},
    {110, 15,
     "There are fewer columns in the INSERT statement than values specified in the VALUES clause. The number of values "
     "in the VALUES clause must match the number of columns specified in the INSERT statement."},
    {111, 15, "'%s' must be the first statement in a query batch."},
    {112, 15, "Variables are not allowed in the %s statement."},
    {113, 15, "Missing end comment mark '*/'."},
    {116, 16,
     "Only one expression can be specified in the select list when the subquery is not introduced with EXISTS."},
    {117, 15, "The %s name '%s' contains more than the maximum number of prefixes. The maximum is %d."},
    {119, 15,
     "Must pass parameter number %d and subsequent parameters as '@name = value'. After the form '@name = value' has "
     "been used, all subsequent parameters must be passed in the form '@name = value'."},
    {120, 15,
     "The select list for the INSERT statement contains fewer items than the insert list. The number of SELECT values "
     "must match the number of INSERT columns."},
    {121, 15,
     "The select list for the INSERT statement contains more items than the insert list. The number of SELECT values "
     "must match the number of INSERT columns."},
    {125, 15, "Case expressions may only be nested to level %d."},
    {127, 15, "A TOP N value may not be negative."},
    {128, 15,
     "The name \"%s\" is not permitted in this context. Valid expressions are constants, constant expressions, and (in "
     "some contexts) variables. Column names are not permitted."},
    {130, 16, "Cannot perform an aggregate function on an expression containing an aggregate or a subquery."},
    {131, 15, "The size (%d) given to the type '%s' exceeds the maximum allowed for any data type (%d)."},
    {134, 15,
     "The variable name '%s' has already been declared. Variable names must be unique within a query batch or stored "
     "procedure."},
    {135, 15, "Cannot use a BREAK statement outside the scope of a WHILE statement."},
    {136, 15, "Cannot use a CONTINUE statement outside the scope of a WHILE statement."},
    {137, 15, "Must declare the scalar variable \"%s\"."},
    {141, 15,
     "A SELECT statement that assigns a value to a variable must not be combined with data-retrieval operations."},
    {144, 15,
     "Cannot use an aggregate or a subquery in an expression used for the group by list of a GROUP BY clause."},
    {145, 15, "ORDER BY items must appear in the select list if SELECT DISTINCT is specified."},
    {147, 15,
     "An aggregate may not appear in the WHERE clause unless it is in a subquery contained in a HAVING clause or a "
     "select list, and the column being aggregated is an outer reference."},
    {155, 15, "'%s' is not a recognized %s option."},
    {156, 15, "Incorrect syntax near the keyword '%s'."},
    {157, 15, "An aggregate may not appear in the set list of an UPDATE statement."},
    {164, 15, "Each GROUP BY expression must contain at least one column that is not an outer reference."},
    {168, 15, "The floating point value '%s' is out of the range of computer representation (8 bytes)."},
    {170, 15, "Line %d: Incorrect syntax near '%s'."},
    {174, 15, "The %s function requires %d argument(s)."},
    {178, 15, "A RETURN statement with a return value cannot be used in this context."},
    {179, 15, "Cannot use the OUTPUT option when passing a constant to a stored procedure."},
    {180, 16, "Statement(s) could not be prepared."},
    {183, 15, "The scale (%d) for column '%s' must be within the range %d to %d."},
    {189, 15, "The %s function requires %d to %d arguments."},
    {191, 15,
     "Some part of your SQL statement is nested too deeply. Rewrite the query or break it up into smaller queries."},
    {192, 16, "The scale must be less than or equal to the precision."},
    {195, 15, "'%s' is not a recognized built-in function name."},
    {201, 16, "Procedure or function '%s' expects parameter '%s', which was not supplied."},
    {203, 16, "The name '%s' is not a valid identifier."},
    {205, 16,
     "All queries combined using a UNION, INTERSECT or EXCEPT operator must have an equal number of expressions in "
     "their target lists."},
    {206, 16, "Operand type clash: %s is incompatible with %s"},
    {207, 16, "Invalid column name '%s'."},
    {208, 16, "Invalid object name '%s'."},
    {209, 16, "Ambiguous column name '%s'."},
    {213, 16, "Column name or number of supplied values does not match table definition."},
    {214, 16, "Procedure expects parameter '%s' of type '%s'."},
    {217, 16, "Maximum stored procedure, function, trigger, or view nesting level exceeded (limit 32)."},
    {220, 16, "Arithmetic overflow error for data type %s, value = %s."},
    {229, 14, "The %s permission was denied on the object '%s'."},
    {232, 16, "Arithmetic overflow error for type %s, value = %s."},
    {234, 16, "There is insufficient result space to convert a money value to %s."},
    {235, 16, "Cannot convert a char value to money. The char value has incorrect syntax."},
    {241, 16, "Conversion failed when converting date and/or time from character string."},
    {242, 16, "The conversion of a %s data type to a %s data type resulted in an out-of-range value."},
    {243, 16, "Type %s is not a defined system type."},
    {244, 16, "The conversion of the %s value '%s' overflowed an %s column. Use a larger integer column."},
    {245, 16, "Conversion failed when converting the %s value '%s' to data type %s."},
    {248, 16, "The conversion of the %s value '%s' overflowed an int column."},
    {257, 16,
     "Implicit conversion from data type %s to %s is not allowed. Use the CONVERT function to run this query."},
    {260, 16,
     "Disallowed implicit conversion from data type %s to data type %s, table '%s', column '%s'. Use the CONVERT "
     "function to run this query."},
    {263, 16, "Must specify table to select from."},
    {264, 16,
     "The column name '%s' is specified more than once in the SET clause or column list of an INSERT. A column cannot "
     "be assigned more than one value in the same clause. Modify the clause to make sure that a column is updated only "
     "once."},
    {266, 16,
     "Transaction count after EXECUTE indicates a mismatching number of BEGIN and COMMIT statements. Previous count = "
     "%d, current count = %d."},
    {268, 16, "Cannot run SELECT INTO in this database."},
    {270, 16, "Object '%s' cannot be modified."},
    {271, 16,
     "The column \"%s\" cannot be modified because it is either a computed column or is the result of a UNION "
     "operator."},
    {281, 16, "%d is not a valid style number when converting from %s to a character string."},
    {289, 16, "Cannot construct data type %s, some of the arguments have values which are not valid."},
    {295, 16, "Conversion failed when converting character string to smalldatetime data type."},
    {306, 16,
     "The text, ntext, and image data types cannot be compared or sorted, except when using IS NULL or LIKE operator."},
    {313, 16, "An insufficient number of arguments were supplied for the procedure or function %s."},
    {319, 15,
     "Incorrect syntax near the keyword 'with'. If this statement is a common table expression, an xmlnamespaces "
     "clause or a change tracking context clause, the previous statement must be terminated with a semicolon."},
    {329, 16, "Each GROUP BY expression must contain at least one column reference."},
    {334, 16,
     "The target table '%s' of the DML statement cannot have any enabled triggers if the statement contains an OUTPUT "
     "clause without INTO clause."},
    {336, 15,
     "Incorrect syntax near '%s'. If this is intended to be a common table expression, you need to explicitly "
     "terminate the previous statement with a semi-colon."},
    {402, 16, "The data types %s and %s are incompatible in the %s operator."},
    {403, 16, "Invalid operator for data type. Operator equals %s, type equals %s."},
    {409, 16, "The %s operation cannot take a %s data type as an argument."},
    {421, 16, "The %s data type cannot be selected as DISTINCT because it is not comparable."},
    {443, 16, "Invalid use of a side-effecting operator '%s' within a function."},
    {444, 16, "Select statements included within a function cannot return data to a client."},
    {445, 16, "COLLATE clause cannot be used on expressions containing a COLLATE clause."},
    {448, 16, "Invalid collation '%s'."},
    {455, 16, "The last statement included within a function must be a return statement."},
    {506, 16, "The invalid escape character \"%s\" was specified in a %s predicate."},
    {511, 16, "Cannot create a row that is greater than the allowable maximum row size."},
    {512, 16,
     "Subquery returned more than 1 value. This is not permitted when the subquery follows =, !=, <, <= , >, >= or "
     "when the subquery is used as an expression."},
    {513, 16, "A column insert or update conflicts with a rule imposed by a previous CREATE RULE statement."},
    {515, 16, "Cannot insert the value NULL into column '%s', table '%s'; column does not allow nulls. %s fails."},
    {517, 16, "Adding a value to a '%s' column caused an overflow."},
    {518, 16, "Cannot convert data type %s to %s."},
    {529, 16, "Explicit conversion from data type %s to %s is not allowed."},
    {530, 16, "The statement terminated. The maximum recursion %d has been exhausted before statement completion."},
    {535, 16,
     "The datediff function resulted in an overflow. The number of dateparts separating two date/time instances is too "
     "large. Try to use datediff with a less precise datepart."},
    {536, 16, "Invalid length parameter passed to the %s function."},
    {537, 16, "Invalid length parameter passed to the LEFT or SUBSTRING function."},
    {544, 16, "Cannot insert explicit value for identity column in table '%s' when IDENTITY_INSERT is set to OFF."},
    {545, 16,
     "Explicit value must be specified for identity column in table '%s' either when IDENTITY_INSERT is set to ON or "
     "when a replication user is inserting into a NOT FOR REPLICATION identity column."},
    {547, 16,
     "The %s statement conflicted with the %s constraint \"%s\". The conflict occurred in database \"%s\", table "
     "\"%s\"%s."},
    {557, 16, "Only functions and some extended stored procedures can be executed from within a function."},
    {628, 16, "Cannot issue SAVE TRANSACTION when there is no active transaction."},
    {701, 17, "There is insufficient system memory in resource pool 'default' to run this query."},
    {823, 24, "The operating system returned an error while the file was read or written: %s."},
    {824, 24, "The database file is damaged: %s."},
    {911, 16, "Database '%s' does not exist. Make sure that the name is entered correctly."},
    {916, 14, "The server principal is not able to access the database \"%s\" under the current security context."},
    {945, 14, "The database file cannot be opened: %s."},
    {1001, 15,
     "Length or precision specifi"
     "cation %d is invalid."},
    {1002, 15,
     "Scale specifi"
     "cation %d is invalid."},
    {1007, 15, "The number '%s' is out of the range for numeric representation (maximum precision 38)."},
    {1010, 15, "Invalid escape character '%s'."},
    {1011, 15, "The correlation name '%s' is specified multiple times in a FROM clause."},
    {1013, 15,
     "The objects \"%s\" and \"%s\" in the FROM clause have the same exposed names. Use correlation names to "
     "distinguish them."},
    {1014, 15, "A TOP or FETCH clause contains an invalid value."},
    {1023, 15, "Invalid parameter %d specified for %s."},
    {1033, 15,
     "The ORDER BY clause is invalid in views, inline functions, derived tables, subqueries, and common table "
     "expressions, unless TOP, OFFSET or FOR XML is also specified."},
    {1035, 15, "Incorrect syntax near '%s', expected '%s'."},
    {1038, 15,
     "An object or column name is missing or empty. For SELECT INTO statements, verify each column has a name. For "
     "other statements, look for empty alias names."},
    {1060, 15, "The number of rows provided for a TOP or FETCH clauses row count parameter must be an integer."},
    {1087, 16, "Must declare the table variable \"%s\"."},
    {1101, 17, "Could not allocate a new page for the database because the disk is full."},
    {1105, 17, "Could not allocate space for the database because its disk is full."},
    {1205, 13,
     "Transaction was deadlocked on lock resources with another process and has been chosen as the deadlock victim. "
     "Rerun the transaction."},
    {1222, 16, "Lock request time out period exceeded."},
    {1505, 16,
     "The CREATE UNIQUE INDEX statement terminated because a duplicate key was found for the object name '%s' and the "
     "index name '%s'."},
    {1750, 10, "Could not create constraint or index. See previous errors."},
    {1752, 16, "Column '%s' in table '%s' is invalid for creating a default constraint."},
    {1767, 16, "Foreign key '%s' references invalid table '%s'."},
    {1769, 16, "Foreign key '%s' references invalid column '%s' in referencing table '%s'."},
    {1770, 16, "Foreign key '%s' references invalid column '%s' in referenced table '%s'."},
    {1776, 16,
     "There are no primary or candidate keys in the referenced table '%s' that match the referencing column list in "
     "the foreign key '%s'."},
    {1778, 16, "Column '%s' is not the same data type as referencing column '%s' in foreign key '%s'."},
    {1779, 16, "Table '%s' already has a primary key defined on it."},
    {1781, 16, "Column already has a DEFAULT bound to it."},
    {1801, 16, "Database '%s' already exists. Choose a different database name."},
    {1911, 16, "Column name '%s' does not exist in the target table or view."},
    {1913, 16, "The operation failed because an index or statistics with name '%s' already exists on table '%s'."},
    {2010, 16, "Cannot perform alter on '%s' because it is an incompatible object type."},
    {2501, 16, "Cannot find a table or object with the name '%s'."},
    {2601, 14,
     "Cannot insert duplicate key row in object '%s' with unique index '%s'. The duplicate key value is (%s)."},
    {2627, 14,
     "Violation of %s constraint '%s'. Cannot insert duplicate key in object '%s'. The duplicate key value is (%s)."},
    {2628, 16, "String or binary data would be truncated in table '%s', column '%s'. Truncated value: '%s'."},
    {2705, 16,
     "Column names in each table must be unique. Column name '%s' in table '%s' is specified more than once."},
    {2714, 16, "There is already an object named '%s' in the database."},
    {2715, 16, "Column, parameter, or variable #%d: Cannot find data type %s."},
    {2716, 16, "Cannot specify a column width (%d) on data type %s."},
    {2744, 16, "Multiple identity columns specified for table '%s'. Only one identity column per table is allowed."},
    {2749, 16,
     "Identity column '%s' must be of data type int, bigint, smallint, tinyint, or decimal or numeric with a scale of "
     "0, unencrypted, and constrained to be nonnullable."},
    {2750, 16, "Specified column precision %d is greater than the maximum precision of %d."},
    {2751, 16, "Specified column scale %d is greater than the specified precision of %d."},
    {2786, 16,
     "The data type of substitution parameter %d does not match the expected type of the format specification."},
    {2787, 16, "Invalid format specification: '%s'."},
    {2812, 16, "Could not find stored procedure '%s'."},
    {3609, 16, "The transaction ended in the trigger. The batch has been aborted."},
    {3617, 16, "The statement was cancelled."},
    {3623, 16, "An invalid floating point operation occurred."},
    {3701, 11, "Cannot %s the %s '%s', because it does not exist or you do not have permission."},
    {3723, 16, "An explicit DROP INDEX is not allowed on index '%s'. It is being used for constraint enforcement."},
    {3725, 16, "The constraint '%s' is being referenced by table '%s', foreign key constraint '%s'."},
    {3726, 16, "Could not drop object '%s' because it is referenced by a FOREIGN KEY constraint."},
    {3728, 16, "'%s' is not a constraint."},
    {3902, 16, "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."},
    {3903, 16, "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."},
    {3906, 16, "Failed to update the database because it is read-only."},
    {3915, 16, "Cannot use the ROLLBACK statement within an INSERT-EXEC statement."},
    {3930, 16,
     "The current transaction cannot be committed and cannot support operations that write to the log file. Roll back "
     "the transaction."},
    {3931, 16,
     "The current transaction cannot be committed and cannot be rolled back to a savepoint. Roll back the entire "
     "transaction."},
    {3998, 16, "Uncommittable transaction is detected at the end of the batch. The transaction is rolled back."},
    {4104, 16, "The multi-part identifier \"%s\" could not be bound."},
    {4112, 15, "The function '%s' must have an OVER clause with ORDER BY."},
    {4121, 16,
     "Cannot find either column \"%s\" or the user-defined function or aggregate \"%s\", or the name is ambiguous."},
    {4145, 15, "An expression of non-boolean type specified in a context where a condition is expected, near '%s'."},
    {4151, 16,
     "The type of the first argument to NULLIF cannot be the NULL constant because the type of the first argument has "
     "to be known."},
    {4406, 16, "Update or insert of view or function '%s' failed because it contains a derived or constant field."},
    {4413, 16, "Could not use view or function '%s' because of binding errors."},
    {4502, 16, "View or function '%s' has more column names specified than columns defined."},
    {4506, 16,
     "Column names in each view or function must be unique. Column name '%s' in view or function '%s' is specified "
     "more than once."},
    {4508, 16,
     "Views or functions are not allowed on temporary tables. Table names that begin with '#' denote temporary "
     "tables."},
    {4511, 16, "Create View or Function failed because no column name was specified for column %d."},
    {4701, 16, "Cannot find the object \"%s\" because it does not exist or you do not have permissions."},
    {4712, 16, "Cannot truncate table '%s' because it is being referenced by a FOREIGN KEY constraint."},
    {4901, 16,
     "ALTER TABLE only allows columns to be added that can contain nulls, or have a DEFAULT definition specified, or "
     "the column being added is an identity or timestamp column, or alternatively if none of the previous conditions "
     "are satisfied the table must be empty to allow addition of this column. Column '%s' cannot be added to non-empty "
     "table '%s' because it does not satisfy these conditions."},
    {4902, 16, "Cannot find the object \"%s\" because it does not exist or you do not have permissions."},
    {4922, 16, "ALTER TABLE ALTER COLUMN %s failed because one or more objects access this column."},
    {4924, 16, "ALTER TABLE DROP COLUMN failed because column '%s' does not exist in table '%s'."},
    {5074, 16, "The %s '%s' is dependent on column '%s'."},
    {6401, 16, "Cannot roll back %s. No transaction or savepoint of that name was found."},
    {7997, 16, "'%s' does not contain an identity column."},
    {8101, 16,
     "An explicit value for the identity column in table '%s' can only be specified when a column list is used and "
     "IDENTITY_INSERT is ON."},
    {8102, 16, "Cannot update identity column '%s'."},
    {8106, 16, "Table '%s' does not have the identity property. Cannot perform SET operation."},
    {8107, 16, "IDENTITY_INSERT is already ON for table '%s'. Cannot perform SET operation for table '%s'."},
    {8110, 16, "Cannot add multiple PRIMARY KEY constraints to table '%s'."},
    {8111, 16, "Cannot define PRIMARY KEY constraint on nullable column in table '%s'."},
    {8114, 16, "Error converting data type %s to %s."},
    {8115, 16, "Arithmetic overflow error converting %s to data type %s."},
    {8116, 16, "Argument data type %s is invalid for argument %d of %s function."},
    {8117, 16, "Operand data type %s is invalid for %s operator."},
    {8120, 16,
     "Column '%s' is invalid in the select list because it is not contained in either an aggregate function or the "
     "GROUP BY clause."},
    {8121, 16,
     "Column '%s' is invalid in the HAVING clause because it is not contained in either an aggregate function or the "
     "GROUP BY clause."},
    {8127, 16,
     "Column \"%s\" is invalid in the ORDER BY clause because it is not contained in either an aggregate function or "
     "the GROUP BY clause."},
    {8134, 16, "Divide by zero error encountered."},
    {8141, 16, "Column %s for table %s is not valid in this context."},
    {8143, 16, "Parameter '%s' was supplied multiple times."},
    {8144, 16, "Procedure or function %s has too many arguments specified."},
    {8145, 16, "%s is not a parameter for procedure %s."},
    {8146, 16, "Procedure %s has no parameters and arguments were supplied."},
    {8147, 16, "Could not create IDENTITY attribute on nullable column '%s', table '%s'."},
    {8152, 16, "String or binary data would be truncated."},
    {8154, 16, "The table '%s' is ambiguous."},
    {8155, 16, "No column name was specified for column %d of '%s'."},
    {8156, 16, "The column '%s' was specified multiple times for '%s'."},
    {8158, 16, "'%s' has more columns than were specified in the column list."},
    {8159, 16, "'%s' has fewer columns than were specified in the column list."},
    {8162, 16,
     "The formal parameter \"%s\" was not declared as an OUTPUT parameter, but the actual parameter passed in "
     "requested output."},
    {8164, 16, "An INSERT EXEC statement cannot be nested."},
    {8168, 16,
     "Cannot create, drop, enable, or disable more than one constraint, column, index, or trigger named '%s' in this "
     "context. Duplicate names are not allowed."},
    {8169, 16, "Conversion failed when converting from a character string to uniqueidentifier."},
    {8170, 16, "Insufficient result space to convert uniqueidentifier value to char."},
    {8197, 16, "The object '%s' does not exist or is invalid for this operation."},
    {8623, 16, "The query processor ran out of internal resources and could not produce a query plan."},
    {9803, 16, "Invalid data for type \"%s\"."},
    {9809, 16, "The style %d is not supported for conversions from %s to %s."},
    {9810, 16, "The datepart %s is not supported by date function %s for data type %s."},
    {9828, 16,
     "The second and third arguments of the TRANSLATE built-in function must contain an equal number of characters."},
    {10700, 16, "The table-valued parameter \"%s\" is READONLY and cannot be modified."},
    {10704, 15,
     "To rethrow an error, a THROW statement must be used inside a CATCH block. Insert the THROW statement inside a "
     "CATCH block, or add error parameters to the THROW statement."},
    {10709, 16, "The number of columns for each row in a table value constructor must be the same."},
    {10734, 15,
     "Variable assignment is not allowed in a statement containing a top level UNION, INTERSECT or EXCEPT operator."},
    {10742, 15, "The offset specified in a OFFSET clause may not be negative."},
    {10744, 15, "The number of rows provided for a FETCH clause must be greater then zero."},
    {10753, 15, "The function '%s' must have an OVER clause."},
    {16905, 16, "The cursor is already open."},
    {16911, 16, "fetch: The fetch type cannot be used with forward only cursors."},
    {16915, 16, "A cursor with the name '%s' already exists."},
    {16916, 16, "A cursor with the name '%s' does not exist."},
    {16917, 16, "Cursor is not open."},
    {16924, 16, "Cursorfetch: The number of variables declared in the INTO list must match that of selected columns."},
    {35100, 16,
     "Error number %d in the THROW statement is outside the valid range. Specify an error number in the valid range of "
     "50000 to 2147483647."},
    {40000, 16, "%s is not supported by the embedded engine (line %d, column %d)."},
    {40001, 16, "%s is not supported by the embedded engine."},
    {50001, 16, "The embedded engine met an internal error %d: %s"},
};

/// One "%..." of a message format.
struct FormatMark {
    bool left = false;
    bool zero = false;
    bool plus = false;
    bool blank = false;
    bool sharp = false;
    int width = 0;
    int precision = -1;
    char letter = 0;
};

int readNumber(std::string_view text, std::size_t& at) {
    int value = 0;
    while (at < text.size() && text[at] >= '0' && text[at] <= '9' && value < 10000) {
        value = value * 10 + (text[at++] - '0');
    }
    return value;
}

FormatMark readMark(std::string_view text, std::size_t& at) {
    FormatMark mark;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '-')
            mark.left = true;
        else if (c == '0')
            mark.zero = true;
        else if (c == '+')
            mark.plus = true;
        else if (c == ' ')
            mark.blank = true;
        else if (c == '#')
            mark.sharp = true;
        else
            break;
    }
    mark.width = readNumber(text, at);
    if (at < text.size() && text[at] == '.') {
        ++at;
        mark.precision = readNumber(text, at);
    }
    while (at < text.size() && (text[at] == 'l' || text[at] == 'h' || text[at] == 'I')) {
        if (text.substr(at, 3) == "I64") at += 2;
        ++at;
    }
    if (at < text.size()) mark.letter = text[at++];
    return mark;
}

std::string wholeNumber(const FormatMark& mark, std::int64_t value) {
    const bool isSigned = mark.letter == 'd' || mark.letter == 'i';
    std::uint64_t size = static_cast<std::uint64_t>(value);
    bool negative = false;
    if (isSigned) {
        negative = value < 0;
        if (negative) size = 0 - size;
    } else if (value < 0 && value >= INT32_MIN) {
        size = static_cast<std::uint32_t>(value);
    }
    const int base = mark.letter == 'o' ? 8 : mark.letter == 'x' || mark.letter == 'X' ? 16 : 10;
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), size, base).ptr;
    std::string digits(buffer.data(), end);
    if (mark.letter == 'X') {
        for (char& c : digits) c = c >= 'a' && c <= 'f' ? static_cast<char>(c - 32) : c;
    }
    if (mark.precision > static_cast<int>(digits.size())) {
        digits.insert(0, static_cast<std::size_t>(mark.precision) - digits.size(), '0');
    }
    std::string sign = negative ? "-" : isSigned && mark.plus ? "+" : isSigned && mark.blank ? " " : "";
    if (mark.sharp && base == 16 && size != 0) sign = mark.letter == 'X' ? "0X" : "0x";
    if (mark.sharp && base == 8 && size != 0) sign = "0";
    const int missing = mark.width - static_cast<int>(sign.size() + digits.size());
    if (mark.zero && !mark.left && mark.precision < 0 && missing > 0) {
        digits.insert(0, static_cast<std::size_t>(missing), '0');
    }
    return sign + digits;
}

void append(std::string& out, const FormatMark& mark, const std::string& piece) {
    std::size_t shown = 0;
    for (const char c : piece) shown += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    const std::string pad(mark.width > static_cast<int>(shown) ? static_cast<std::size_t>(mark.width) - shown : 0, ' ');
    out += mark.left ? piece + pad : pad + piece;
}

}  // namespace

const ErrorText* findErrorText(int number) {
    const auto* end = std::end(kTexts);
    const auto* row = std::lower_bound(std::begin(kTexts), end, number,
                                       [](const ErrorText& text, int wanted) { return text.number < wanted; });
    return row != end && row->number == number ? row : nullptr;
}

std::string formatMessage(std::string_view format, const std::vector<Datum>& arguments) {
    std::string out;
    std::size_t next = 0;
    for (std::size_t i = 0; i < format.size();) {
        if (format[i] != '%') {
            out += format[i++];
            continue;
        }
        if (i + 1 < format.size() && format[i + 1] == '%') {
            out += '%';
            i += 2;
            continue;
        }
        const std::size_t start = i++;
        const FormatMark mark = readMark(format, i);
        const bool isText = mark.letter == 's';
        if (!isText && std::string_view("diuoxX").find(mark.letter) == std::string_view::npos) {
            raise(2787, {format.substr(start, i - start)});
        }
        const std::size_t index = next++;
        if (index >= arguments.size() || arguments[index].isNull()) {
            append(out, mark, "(null)");
            continue;
        }
        const Datum& value = arguments[index];
        if (isText != (value.storage == Storage::Text) || value.storage == Storage::Real) {
            raise(2786, {static_cast<int>(index) + 1});
        }
        std::string piece = isText ? value.text : wholeNumber(mark, value.integer);
        if (isText && mark.precision >= 0) {
            piece = piece.substr(0, static_cast<std::size_t>(mark.precision));
        }
        append(out, mark, piece);
    }
    return out;
}

}  // namespace kv::tsql
