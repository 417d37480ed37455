-- The last sequence used on a date (0 for a day without transactions), then
-- how many transactions the day has.
CREATE PROCEDURE dbo.TRU_Prepara
    @fecha varchar(8) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SELECT COALESCE(MAX(SECUENCIA), 0) AS secuenciA FROM dbo.MOVIMIENTOS WHERE FECHA = @fecha;
    SELECT COUNT(*) AS cuantas FROM dbo.MOVIMIENTOS WHERE FECHA = @fecha;
END
