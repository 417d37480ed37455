-- The last twelve months of the USDT services, ending with the current one:
-- first those months as yyyymm (fech), then the six sets by month, the money
-- sent, no count by client.
CREATE PROCEDURE dbo.TRU_NewCalk_03_USDT
    @operadora smallint = 0, @servicio int = 0
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @hoy date = CAST(GETDATE() AS date);
    DECLARE @primero date = DATEADD(month, -11, DATEFROMPARTS(YEAR(@hoy), MONTH(@hoy), 1));
    DECLARE @desde varchar(8) = CONVERT(varchar(8), @primero, 112),
            @hasta varchar(8) = CONVERT(varchar(6), @hoy, 112) + '31';
    SELECT CAST(CONVERT(varchar(6), DATEADD(month, n, @primero), 112) AS int) AS fech
    FROM (VALUES (0), (1), (2), (3), (4), (5), (6), (7), (8), (9), (10), (11)) AS meses (n)
    ORDER BY n;
    SELECT CAST(LEFT(FECHA, 6) AS int) AS Fecha, SUM(monto) AS Suma, COUNT(*) AS Tot_m,
           CASE WHEN SUM(monto) > 0 THEN 100 * SUM(gan) / SUM(monto) ELSE 0 END AS Porcen, SUM(gan) AS Totgan
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    GROUP BY LEFT(FECHA, 6) ORDER BY LEFT(FECHA, 6);
    SELECT C_PROVEEDOR AS prov, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    GROUP BY C_PROVEEDOR ORDER BY ROUND(SUM(monto), 4) DESC, prov;
    SELECT C_CLIENTE AS Cliente, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    GROUP BY C_CLIENTE ORDER BY ROUND(SUM(monto), 4) DESC, Cliente;
    SELECT C_BANCO AS Banco, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    WHERE C_BANCO <> ''
    GROUP BY C_BANCO ORDER BY ROUND(SUM(monto), 4) DESC, Banco;
    SELECT CAST(LEFT(FECHA, 6) AS int) AS Fecha, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    WHERE tipo_operacion = 3 AND C_BANCO <> ''
    GROUP BY LEFT(FECHA, 6) ORDER BY LEFT(FECHA, 6);
    SELECT tipo_servicio AS servi, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 1)
    GROUP BY tipo_servicio ORDER BY ROUND(SUM(monto), 4) DESC, servi;
END
