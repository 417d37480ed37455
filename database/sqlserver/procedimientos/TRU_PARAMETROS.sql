-- The business's parameters in one row, also from an empty table, with no
-- null; the moments as dd/mm/yyyy hh:mm:ss text.
CREATE PROCEDURE dbo.TRU_PARAMETROS
AS
BEGIN
    SET NOCOUNT ON;
    SELECT COALESCE(p.Clave, '') AS Clave,
           COALESCE(CONVERT(varchar(10), p.Fecha, 103) + ' ' + CONVERT(varchar(8), p.Fecha, 108), '') AS Fecha,
           COALESCE(CONVERT(varchar(10), p.Fecha_Compraventas, 103) + ' ' + CONVERT(varchar(8), p.Fecha_Compraventas, 108), '')
               AS Fecha_Compraventas,
           COALESCE(p.Dolar, 0) AS Dolar
    FROM (SELECT 1 AS uno) AS u
    LEFT JOIN (SELECT TOP 1 Clave, Fecha, Fecha_Compraventas, Dolar FROM dbo.parametros) AS p ON 1 = 1;
END
