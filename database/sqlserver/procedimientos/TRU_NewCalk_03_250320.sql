-- One year (four digits, TRU_Ano; any other text matches no row) month by
-- month: first the twelve months as yyyymm (Fecha), then the six sets of
-- TRU_NewCalk_02_250320 by month.
CREATE PROCEDURE dbo.TRU_NewCalk_03_250320
    @ano varchar(10) = '', @operadora smallint = 0, @servicio int = 0
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @desde varchar(8) = dbo.TRU_Ano(@ano) + '0101', @hasta varchar(8) = dbo.TRU_Ano(@ano) + '1231';
    SELECT COALESCE(TRY_CAST(@ano AS int), 0) * 100 + n AS Fecha
    FROM (VALUES (1), (2), (3), (4), (5), (6), (7), (8), (9), (10), (11), (12)) AS meses (n)
    ORDER BY n;
    SELECT CAST(LEFT(FECHA, 6) AS int) AS Fecha, SUM(monto) AS Suma, COUNT(*) AS Tot_m,
           CASE WHEN SUM(monto) > 0 THEN 100 * SUM(gan) / SUM(monto) ELSE 0 END AS Porcen, SUM(gan) AS Totgan
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    GROUP BY LEFT(FECHA, 6) ORDER BY LEFT(FECHA, 6);
    SELECT C_PROVEEDOR AS prov, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    GROUP BY C_PROVEEDOR ORDER BY ROUND(SUM(monto), 4) DESC, prov;
    SELECT C_CLIENTE AS Cliente, SUM(monto) AS Suma, COUNT(*) AS cuantos
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    GROUP BY C_CLIENTE ORDER BY ROUND(SUM(monto), 4) DESC, Cliente;
    SELECT C_BANCO AS Banco, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    WHERE C_BANCO <> ''
    GROUP BY C_BANCO ORDER BY ROUND(SUM(monto), 4) DESC, Banco;
    SELECT CAST(LEFT(FECHA, 6) AS int) AS Fecha, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    WHERE tipo_operacion = 3 AND C_BANCO <> ''
    GROUP BY LEFT(FECHA, 6) ORDER BY LEFT(FECHA, 6);
    SELECT tipo_servicio AS servi, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    GROUP BY tipo_servicio ORDER BY ROUND(SUM(monto), 4) DESC, servi;
END
