-- The whole reference cache of the client in one call, nine result sets in a
-- fixed order; the client moves from one to the next without looking at the
-- names of the sets, so each one is always delivered, also when empty.
--   1 banks                        5 the wallet prices of the day (dolar_NEW),
--   2 clients                        which the client steps over unread
--   3 providers                    6 services, by rising code: the client takes
--   4 payment concepts               the last code read as its count
--   7 rate (MONTO) of each service 8 USDT prices (a row with an equivalencia
--   9 Zelle banks                    writes on that service's place)
-- Codes are indexes in the client (services and USDT rows 0 to 100, Zelle
-- banks 0 to 10): they are delivered as they stand, since a code beyond the
-- range is the client's own stop. No column that the client reads is null.
-- Bank codes go out in the four digits the transactions store ('0134'), since
-- the client finds a bank's name by comparing those texts.
SELECT printf('%04d', C_Banco) AS C_Banco, COALESCE(D_banco, '') AS D_banco
FROM bancos ORDER BY C_Banco;

SELECT C_CLIENTE, COALESCE(D_cliente, '') AS D_cliente, COALESCE(Revisar, '') AS Revisar
FROM clientes ORDER BY C_CLIENTE;

SELECT C_proveedor, COALESCE(D_proveedor, '') AS D_proveedor,
       COALESCE(porgan, 0) AS porgan, COALESCE(Comision, 0) AS Comision
FROM proveedor ORDER BY C_proveedor;

SELECT C_CONCEPTO, COALESCE(D_CONCEPTO, '') AS D_CONCEPTO
FROM conceptos ORDER BY C_CONCEPTO;

SELECT Fecha, TRUMIN, ZELLE, ZINLI, AMAZON
FROM dolar_NEW;

SELECT C_SERVIcio, COALESCE(D_SERVIcio, '') AS D_SERVIcio, COALESCE(porcentaje, 0) AS porcentaje,
       COALESCE(decimales, 0) AS decimales, COALESCE(letra, '') AS letra
FROM servicios ORDER BY C_SERVIcio;

SELECT C_SERVIcio, COALESCE(MONTO, 0) AS MONTO
FROM servicios ORDER BY C_SERVIcio;

SELECT COALESCE(equivalencia, 0) AS equivalencia, C_SERVIcio,
       COALESCE(compra, 0) AS compra, COALESCE(div, 0) AS div
FROM servicios_usdt ORDER BY C_SERVIcio;

SELECT C_Banco, COALESCE(D_banco, '') AS D_banco
FROM bancos_zelle ORDER BY C_Banco;
