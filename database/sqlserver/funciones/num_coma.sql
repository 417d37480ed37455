-- An amount written the business's way, as some procedures receive it: with a
-- ',' the last ',' is the decimal mark and every other mark a thousands mark
-- ("1,234,50" is 1234.5); without one, a single '.' is a decimal point and
-- several are thousands marks. Blank is 0; other text is a conversion error.
CREATE FUNCTION dbo.num_coma (@texto varchar(60))
RETURNS float
AS
BEGIN
    DECLARE @t varchar(60) = LTRIM(RTRIM(@texto));
    IF @t IS NULL RETURN NULL;
    IF @t = '' RETURN 0;
    DECLARE @p int = CHARINDEX(',', REVERSE(@t));
    IF @p > 0
        SET @t = REPLACE(REPLACE(LEFT(@t, LEN(@t) - @p), '.', ''), ',', '') + '.' + RIGHT(@t, @p - 1);
    ELSE IF LEN(@t) - LEN(REPLACE(@t, '.', '')) > 1
        SET @t = REPLACE(@t, '.', '');
    RETURN CAST(@t AS float);
END
