-- Title: The trial balance sums to zero
-- Explanation: The prepared balances of a month, debit less credit over all accounts, must come to nothing, before and after the month's
--   movement. A difference comes from figures that did not balance when they were brought in.
SELECT P.Period, SUM(P.Beginning) AS Beginning, SUM(P.Debit) - SUM(P.Credit) AS Movement, SUM(P.Ending) AS Ending
FROM dbo.PeriodBalance AS P
GROUP BY P.Period
HAVING SUM(P.Beginning) <> 0 OR SUM(P.Debit) <> SUM(P.Credit) OR SUM(P.Ending) <> 0
ORDER BY P.Period;
