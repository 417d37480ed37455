-- One month day by day (the text as TRU_Mes reads it: '202601' or '20261';
-- any other text matches no row): six sets, in this order, each also when
-- empty: 1 by day, received, transactions, percentage and amount of the
-- gain; 2 by provider; 3 by client, with the transactions; 4 by paying bank;
-- 5 by day, the rows paid by direct transfer (type of operation 3); 6 by
-- service. The sets by code come with the largest amount first, sums equal to
-- four decimals by code (floats added in another order part in the last digit).
CREATE PROCEDURE dbo.TRU_NewCalk_02_250320
    @mes varchar(10) = '', @operadora smallint = 0, @servicio int = 0
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @desde varchar(8) = dbo.TRU_Mes(@mes) + '01', @hasta varchar(8) = dbo.TRU_Mes(@mes) + '31';
    SELECT CAST(SUBSTRING(FECHA, 7, 2) AS int) AS dia, SUM(monto) AS Suma, COUNT(*) AS Tot_m,
           CASE WHEN SUM(monto) > 0 THEN 100 * SUM(gan) / SUM(monto) ELSE 0 END AS Porcen, SUM(gan) AS Totgan
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    GROUP BY FECHA ORDER BY FECHA;
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
    SELECT CAST(SUBSTRING(FECHA, 7, 2) AS int) AS dia, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    WHERE tipo_operacion = 3 AND C_BANCO <> ''
    GROUP BY FECHA ORDER BY FECHA;
    SELECT tipo_servicio AS servi, SUM(monto) AS Suma
    FROM dbo.TRU_Filtra_Estadistica(@desde, @hasta, @operadora, @servicio, 0)
    GROUP BY tipo_servicio ORDER BY ROUND(SUM(monto), 4) DESC, servi;
END
