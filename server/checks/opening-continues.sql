-- Title: A year opens with what the year before ended with
-- Explanation: The opening balances of a year that was carried forward must be the last prepared balances of the year before, with income
--   and expense closed by its year-end batch. A difference means that the year before changed after its closing, or that an opening balance
--   was typed over; prepare its last month and run the year-end closing again.
SELECT F.Year, F.Code, SUM(F.Opening) AS Opening, SUM(F.Closing) AS Closing
FROM (
    SELECT B.Year, B.Acct AS Code, B.Debit - B.Credit AS Opening, CAST(0 AS money) AS Closing
    FROM dbo.BegBalance AS B
    INNER JOIN dbo.GLBatch AS G ON G.Batch = 'YE' + CONVERT(varchar(4), CAST(B.Year AS int) - 1)
    INNER JOIN dbo.PreparedPeriod AS R ON R.Period = G.Period AND R.StaleSince IS NULL
    UNION ALL
    SELECT CONVERT(varchar(4), CAST(SUBSTRING(G.Batch, 3, 4) AS int) + 1) AS Year, P.Code, CAST(0 AS money) AS Opening, P.Ending AS Closing
    FROM dbo.GLBatch AS G
    INNER JOIN dbo.PreparedPeriod AS R ON R.Period = G.Period AND R.StaleSince IS NULL
    INNER JOIN dbo.PeriodBalance AS P ON P.Period = G.Period
    WHERE G.BatchType = 'YE'
    UNION ALL
    SELECT
        CONVERT(varchar(4), CAST(SUBSTRING(G.Batch, 3, 4) AS int) + 1) AS Year, D.Code, CAST(0 AS money) AS Opening,
        D.Debit - D.Credit AS Closing
    FROM dbo.GLBatch AS G
    INNER JOIN dbo.PreparedPeriod AS R ON R.Period = G.Period AND R.StaleSince IS NULL
    INNER JOIN dbo.Batchdet AS D ON D.Batch = G.Batch
    WHERE G.BatchType = 'YE'
) AS F
GROUP BY F.Year, F.Code
HAVING SUM(F.Opening) <> SUM(F.Closing)
ORDER BY F.Year, F.Code;
