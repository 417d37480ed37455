-- The year of the monthly summary: four digits, given back as they came. Any
-- other text gives NULL, which matches no date.
CREATE FUNCTION dbo.TRU_Ano (@texto varchar(10))
RETURNS varchar(4)
AS
BEGIN
    IF @texto IS NULL OR DATALENGTH(@texto) <> 4 OR @texto LIKE '%[^0-9]%' RETURN NULL;
    RETURN @texto;
END
