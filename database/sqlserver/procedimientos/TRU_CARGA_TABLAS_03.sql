-- The program's whole reference cache: nine result sets in a fixed order, each
-- delivered also when empty. 1 banks, 2 clients, 3 providers, 4 concepts,
-- 5 the wallet prices of the day (stepped over by the program), 6 services by
-- rising code (the last code read is the program's count), 7 the rate of each
-- service, 8 USDT prices, 9 Zelle banks. No column the program reads is null.
CREATE PROCEDURE dbo.TRU_CARGA_TABLAS_03
AS
BEGIN
    SET NOCOUNT ON;
    -- bank codes in the four digits the transactions store ('0134')
    SELECT CASE WHEN C_Banco BETWEEN 0 AND 9999 THEN RIGHT('0000' + CAST(C_Banco AS varchar(10)), 4)
                ELSE CAST(C_Banco AS varchar(10)) END AS C_Banco,
           COALESCE(D_banco, '') AS D_banco
    FROM dbo.bancos ORDER BY C_Banco;
    SELECT C_CLIENTE, COALESCE(D_cliente, '') AS D_cliente, COALESCE(Revisar, '') AS Revisar
    FROM dbo.clientes ORDER BY C_CLIENTE;
    SELECT C_proveedor, COALESCE(D_proveedor, '') AS D_proveedor, COALESCE(porgan, 0) AS porgan,
           COALESCE(Comision, 0) AS Comision
    FROM dbo.proveedor ORDER BY C_proveedor;
    SELECT C_CONCEPTO, COALESCE(D_CONCEPTO, '') AS D_CONCEPTO FROM dbo.conceptos ORDER BY C_CONCEPTO;
    SELECT Fecha, TRUMIN, ZELLE, ZINLI, AMAZON FROM dbo.dolar_NEW;
    SELECT C_SERVIcio, COALESCE(D_SERVIcio, '') AS D_SERVIcio, COALESCE(porcentaje, 0) AS porcentaje,
           COALESCE(decimales, 0) AS decimales, COALESCE(letra, '') AS letra
    FROM dbo.servicios ORDER BY C_SERVIcio;
    SELECT C_SERVIcio, COALESCE(MONTO, 0) AS MONTO FROM dbo.servicios ORDER BY C_SERVIcio;
    SELECT COALESCE(equivalencia, 0) AS equivalencia, C_SERVIcio, COALESCE(compra, 0) AS compra,
           COALESCE(div, 0) AS div
    FROM dbo.servicios_usdt ORDER BY C_SERVIcio;
    SELECT C_Banco, COALESCE(D_banco, '') AS D_banco FROM dbo.bancos_zelle ORDER BY C_Banco;
END
