-- Purpose: The cash flow statement of a month and of the year to date, by the indirect method.
-- Called by: the cash flow report.
-- Parameters:
--   @Period  yyyyMM
-- Returns: Part (1 operating, 2 investing, 3 financing, 4 cash at the beginning), PartTitle, LineCode, Title, Month, YearToDate (money that
--   came in above zero); by part and line. Parts 1 to 4 add up to the cash at the end: what is cash stands in vwCashAccount.
-- Errors: 50006 no period, 50030 not prepared
-- Depreciation is what stands in the group of the depreciation account of the settings; it is added back to the result and taken out of the
--   movement of the non-current assets. Current liabilities count as operating, others and equity as financing.
CREATE OR ALTER PROCEDURE dbo.sp_Report_CashFlow
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @From varchar(6);
    DECLARE @Depreciation varchar(10);
    EXEC dbo.Private_RefuseUnprepared @Period;
    SET @From = dbo.fn_FirstPeriodOf(dbo.fn_YearOf(@Period));
    SELECT @From = MIN(P.Period) FROM dbo.PeriodBalance AS P WHERE P.Period BETWEEN @From AND @Period;
    SELECT @Depreciation = A.GLGroup
    FROM dbo.PARAMETERS AS X
    INNER JOIN dbo.AcctCode AS A ON A.Code = X.ParamValue
    WHERE X.Code = 'DEPRECIATIONCODE';
    SET @Depreciation = ISNULL(@Depreciation, '-');

    SELECT
        F.Part,
        CASE F.Part
            WHEN 1 THEN 'CASH FLOWS FROM OPERATING ACTIVITIES' WHEN 2 THEN 'CASH FLOWS FROM INVESTING ACTIVITIES'
            WHEN 3 THEN 'CASH FLOWS FROM FINANCING ACTIVITIES' ELSE 'CASH AT THE BEGINNING'
        END AS PartTitle,
        F.LineCode, F.Title,
        SUM(CASE WHEN F.Period = @Period THEN F.Amount ELSE 0 END) AS Month, SUM(F.YearAmount) AS YearToDate
    FROM (
        SELECT
            V.Period, CASE WHEN V.Section > 40 OR V.Section IN (11, 21) THEN 1 WHEN V.Section = 12 THEN 2 ELSE 3 END AS Part,
            CASE WHEN V.Section > 40 THEN '0' WHEN V.Section = 12 THEN '12' ELSE V.GLGroup END AS LineCode,
            CASE
                WHEN V.Section > 40 THEN 'NET INCOME' WHEN V.Section = 12 THEN 'PROPERTY, EQUIPMENT AND OTHER NON-CURRENT ASSETS'
                ELSE V.GroupTitle
            END AS Title,
            V.Credit - V.Debit AS Amount, V.Credit - V.Debit AS YearAmount
        FROM dbo.vwFigure AS V
        LEFT JOIN dbo.vwCashAccount AS K ON K.Code = V.Code
        WHERE V.Period BETWEEN @From AND @Period AND K.Code IS NULL
        UNION ALL
        SELECT
            V.Period, 1 AS Part, '1' AS LineCode, 'ADD BACK: DEPRECIATION AND AMORTIZATION' AS Title, V.Debit - V.Credit AS Amount,
            V.Debit - V.Credit AS YearAmount
        FROM dbo.vwFigure AS V
        WHERE V.Period BETWEEN @From AND @Period AND V.GLGroup = @Depreciation
        UNION ALL
        SELECT
            V.Period, 2 AS Part, '12' AS LineCode, 'PROPERTY, EQUIPMENT AND OTHER NON-CURRENT ASSETS' AS Title,
            V.Credit - V.Debit AS Amount, V.Credit - V.Debit AS YearAmount
        FROM dbo.vwFigure AS V
        WHERE V.Period BETWEEN @From AND @Period AND V.GLGroup = @Depreciation
        UNION ALL
        SELECT
            V.Period, 4 AS Part, '0' AS LineCode, 'CASH AND CASH EQUIVALENTS AT THE BEGINNING' AS Title, V.Beginning AS Amount,
            CASE WHEN V.Period = @From THEN V.Beginning ELSE 0 END AS YearAmount
        FROM dbo.vwFigure AS V
        INNER JOIN dbo.vwCashAccount AS K ON K.Code = V.Code
        WHERE V.Period IN (@From, @Period)
    ) AS F
    GROUP BY F.Part, F.LineCode, F.Title
    HAVING SUM(CASE WHEN F.Period = @Period THEN F.Amount ELSE 0 END) <> 0 OR SUM(F.YearAmount) <> 0 OR F.LineCode = '0'
    ORDER BY F.Part, F.LineCode;
END;
