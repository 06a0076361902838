-- Title: Prepared balances add up
-- Explanation: The ending balance of an account and department must be its beginning balance, plus debits, less credits.
SELECT P.Period, P.Code, P.Dept, P.Beginning, P.Debit, P.Credit, P.Ending
FROM dbo.PeriodBalance AS P
WHERE P.Beginning + P.Debit - P.Credit <> P.Ending
ORDER BY P.Period, P.Code, P.Dept;
