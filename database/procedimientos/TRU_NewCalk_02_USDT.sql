-- The figures of one month of the USDT services (codes 50 and up), day by
-- day, for the daily USDT statistics. The six sets of TRU_NewCalk_02_250320,
-- in the same order and with the same rules, with these differences: the
-- money is what the client sent (enviado), in the service's own currency, and
-- the set by client carries no count of transactions. Service filter: 0 every
-- USDT service, any other value that service code alone (98 and 99 are
-- ordinary codes here; the service boxes of the screen send 1 to 4, which
-- select nothing, as no USDT service has those codes).
--@param @mes TEXT = ''
--@param @operadora INTEGER = 0
--@param @servicio INTEGER = 0
WITH f AS (
    SELECT FECHA, enviado AS monto,
           CASE WHEN trim(C_BANCO) <> '' THEN g2 ELSE 0 END AS gan
    FROM MOVIMIENTOS
    WHERE FECHA >= @mes || '01' AND FECHA <= @mes || '31' AND trim(C_BANCO) <> '7777'
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio))
SELECT CAST(substr(FECHA, 7, 2) AS INTEGER) AS dia, total(monto) AS Suma, count(*) AS Tot_m,
       CASE WHEN total(monto) > 0 THEN 100 * total(gan) / total(monto) ELSE 0 END AS Porcen,
       total(gan) AS Totgan
FROM f GROUP BY FECHA ORDER BY FECHA;

WITH f AS (
    SELECT C_PROVEEDOR, enviado AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= @mes || '01' AND FECHA <= @mes || '31' AND trim(C_BANCO) <> '7777'
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio))
SELECT C_PROVEEDOR AS prov, total(monto) AS Suma
FROM f GROUP BY C_PROVEEDOR ORDER BY Suma DESC, prov;

WITH f AS (
    SELECT C_CLIENTE, enviado AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= @mes || '01' AND FECHA <= @mes || '31' AND trim(C_BANCO) <> '7777'
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio))
SELECT C_CLIENTE AS Cliente, total(monto) AS Suma
FROM f GROUP BY C_CLIENTE ORDER BY Suma DESC, Cliente;

WITH f AS (
    SELECT trim(C_BANCO) AS banco, enviado AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= @mes || '01' AND FECHA <= @mes || '31' AND trim(C_BANCO) NOT IN ('', '7777')
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio))
SELECT banco AS Banco, total(monto) AS Suma
FROM f GROUP BY banco ORDER BY Suma DESC, Banco;

WITH f AS (
    SELECT FECHA, enviado AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= @mes || '01' AND FECHA <= @mes || '31' AND tipo_operacion = 3
      AND trim(C_BANCO) NOT IN ('', '7777')
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio))
SELECT CAST(substr(FECHA, 7, 2) AS INTEGER) AS dia, total(monto) AS Suma
FROM f GROUP BY FECHA ORDER BY FECHA;

WITH f AS (
    SELECT tipo_servicio, enviado AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= @mes || '01' AND FECHA <= @mes || '31' AND trim(C_BANCO) <> '7777'
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio))
SELECT tipo_servicio AS servi, total(monto) AS Suma
FROM f GROUP BY tipo_servicio ORDER BY Suma DESC, servi;
