#pragma once
// CaseFile: T-SQL cases as text, and what each of their batches must answer.
//
//   name: a duplicate key is refused
//   holds: the second row of one key fails and leaves the first alone
//   group: keys
//
//   CREATE TABLE t (id int PRIMARY KEY)
//   INSERT t VALUES (1)
//   => ok
//
//   INSERT t VALUES (1)
//   => error 2627 Violation of PRIMARY KEY constraint
//
//   SELECT id, NULL AS nothing FROM t
//   => id|nothing
//   1|NULL
//
// A batch ends with one or more "=>" lines: each is a result set (its header, then its rows up to an empty line or the
// next "=>"), "ok" for no result set, or "error" with the number and the beginning of the text, after the result sets
// that came before it. "needs:" in the head says what a case cannot do without: "session" (not to be reopened).

#include <string>
#include <vector>

namespace kv::sqlcases {

struct WantedSet {
    std::string header;
    std::vector<std::string> rows;
};

struct Step {
    int line = 0;
    std::string batch;
    std::vector<WantedSet> sets;
    int error = 0;  ///< 0: none may come
    std::string errorText;
};

struct Case {
    std::string file;
    int line = 0;
    std::string name, holds, group, needs;
    std::vector<Step> steps;
};

/// Reads the cases of a file. Raises std::runtime_error with file and line for what is no case.
std::vector<Case> readCases(const std::string& path);

}  // namespace kv::sqlcases
