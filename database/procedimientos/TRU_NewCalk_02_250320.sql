-- The figures of one month, day by day, for the daily statistics: six result
-- sets in a fixed order, each one delivered also when empty, every sum a
-- number (never null):
--   1 by day of the month (dia): dollars received (Suma), transactions
--     (Tot_m), the business's gain (Totgan, g2 of the paid rows) and that
--     gain as a percentage of what was received (Porcen, 0 on a day with no
--     dollars);
--   2 by provider (prov), 3 by client (Cliente, with the transactions,
--     cuantos), 4 by paying bank (Banco, the paid rows, the code as stored),
--     6 by service (servi): dollars received, the largest first;
--   5 by day: the dollars of the rows paid by direct transfer (type of
--     operation 3), the part of the day that did not go through a provider's
--     account.
-- Rows returned to the client (bank 7777) count nowhere. Unpaid rows count as
-- received (they are money in hand) but earn nothing until they are paid.
-- Filters: the month as yyyymm text, taken as sent; operator 0 all, 1 or 2;
-- service 0 all, 98 every service with sw_calculos 1, 99 every one with
-- sw_calculos 2, any other that service code (the service boxes of the
-- screen send 1 to 4, which are the codes of the four wallets).
--@param @mes TEXT = ''
--@param @operadora INTEGER = 0
--@param @servicio INTEGER = 0
WITH f AS (
    SELECT FECHA, recibido AS monto,
           CASE WHEN trim(C_BANCO) <> '' THEN g2 ELSE 0 END AS gan
    FROM MOVIMIENTOS
    WHERE FECHA >= @mes || '01' AND FECHA <= @mes || '31' AND trim(C_BANCO) <> '7777'
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND (@servicio = 0
           OR (@servicio IN (98, 99)
               AND tipo_servicio IN (SELECT C_SERVIcio FROM servicios WHERE sw_calculos = @servicio - 97))
           OR (@servicio NOT IN (98, 99) AND tipo_servicio = @servicio)))
SELECT CAST(substr(FECHA, 7, 2) AS INTEGER) AS dia, total(monto) AS Suma, count(*) AS Tot_m,
       CASE WHEN total(monto) > 0 THEN 100 * total(gan) / total(monto) ELSE 0 END AS Porcen,
       total(gan) AS Totgan
FROM f GROUP BY FECHA ORDER BY FECHA;

WITH f AS (
    SELECT C_PROVEEDOR, recibido AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= @mes || '01' AND FECHA <= @mes || '31' AND trim(C_BANCO) <> '7777'
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND (@servicio = 0
           OR (@servicio IN (98, 99)
               AND tipo_servicio IN (SELECT C_SERVIcio FROM servicios WHERE sw_calculos = @servicio - 97))
           OR (@servicio NOT IN (98, 99) AND tipo_servicio = @servicio)))
SELECT C_PROVEEDOR AS prov, total(monto) AS Suma
FROM f GROUP BY C_PROVEEDOR ORDER BY Suma DESC, prov;

WITH f AS (
    SELECT C_CLIENTE, recibido AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= @mes || '01' AND FECHA <= @mes || '31' AND trim(C_BANCO) <> '7777'
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND (@servicio = 0
           OR (@servicio IN (98, 99)
               AND tipo_servicio IN (SELECT C_SERVIcio FROM servicios WHERE sw_calculos = @servicio - 97))
           OR (@servicio NOT IN (98, 99) AND tipo_servicio = @servicio)))
SELECT C_CLIENTE AS Cliente, total(monto) AS Suma, count(*) AS cuantos
FROM f GROUP BY C_CLIENTE ORDER BY Suma DESC, Cliente;

WITH f AS (
    SELECT trim(C_BANCO) AS banco, recibido AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= @mes || '01' AND FECHA <= @mes || '31' AND trim(C_BANCO) NOT IN ('', '7777')
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND (@servicio = 0
           OR (@servicio IN (98, 99)
               AND tipo_servicio IN (SELECT C_SERVIcio FROM servicios WHERE sw_calculos = @servicio - 97))
           OR (@servicio NOT IN (98, 99) AND tipo_servicio = @servicio)))
SELECT banco AS Banco, total(monto) AS Suma
FROM f GROUP BY banco ORDER BY Suma DESC, Banco;

WITH f AS (
    SELECT FECHA, recibido AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= @mes || '01' AND FECHA <= @mes || '31' AND tipo_operacion = 3
      AND trim(C_BANCO) NOT IN ('', '7777')
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND (@servicio = 0
           OR (@servicio IN (98, 99)
               AND tipo_servicio IN (SELECT C_SERVIcio FROM servicios WHERE sw_calculos = @servicio - 97))
           OR (@servicio NOT IN (98, 99) AND tipo_servicio = @servicio)))
SELECT CAST(substr(FECHA, 7, 2) AS INTEGER) AS dia, total(monto) AS Suma
FROM f GROUP BY FECHA ORDER BY FECHA;

WITH f AS (
    SELECT tipo_servicio, recibido AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= @mes || '01' AND FECHA <= @mes || '31' AND trim(C_BANCO) <> '7777'
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND (@servicio = 0
           OR (@servicio IN (98, 99)
               AND tipo_servicio IN (SELECT C_SERVIcio FROM servicios WHERE sw_calculos = @servicio - 97))
           OR (@servicio NOT IN (98, 99) AND tipo_servicio = @servicio)))
SELECT tipo_servicio AS servi, total(monto) AS Suma
FROM f GROUP BY tipo_servicio ORDER BY Suma DESC, servi;
