-- The month of the statistics, as the screens send it typed: a four-digit
-- year followed by the month, 1 to 12, with or without its zero ('202601' and
-- '20261' are January 2026), given back as yyyymm. Any other text gives NULL,
-- which matches no date.
CREATE FUNCTION dbo.TRU_Mes (@texto varchar(10))
RETURNS varchar(6)
AS
BEGIN
    IF @texto IS NULL OR DATALENGTH(@texto) NOT IN (5, 6) OR @texto LIKE '%[^0-9]%' RETURN NULL;
    DECLARE @mes int = CAST(SUBSTRING(@texto, 5, 2) AS int);
    IF @mes < 1 OR @mes > 12 RETURN NULL;
    RETURN LEFT(@texto, 4) + RIGHT('0' + CAST(@mes AS varchar(2)), 2);
END
