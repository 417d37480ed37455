-- The figures of one year, month by month, for the monthly summary. First
-- the calendar: the twelve months of the year as the numbers yyyymm (Fecha),
-- the rows of the screen, also the months without movements. Then the six
-- sets of TRU_NewCalk_02_250320, with the rules and filters told there, over
-- the whole year, where the sets by day are by month (Fecha, yyyymm):
--   1 by month: received (Suma), transactions (Tot_m), gain (Totgan),
--     percentage of gain (Porcen); 2 by provider; 3 by client (cuantos);
--   4 by paying bank; 5 by month, the direct transfers; 6 by service.
-- The year is the text as sent ('2025').
--@param @ano TEXT = ''
--@param @operadora INTEGER = 0
--@param @servicio INTEGER = 0
WITH RECURSIVE meses(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM meses WHERE n < 12)
SELECT CAST(@ano AS INTEGER) * 100 + n AS Fecha FROM meses ORDER BY n;

WITH f AS (
    SELECT FECHA, recibido AS monto,
           CASE WHEN trim(C_BANCO) <> '' THEN g2 ELSE 0 END AS gan
    FROM MOVIMIENTOS
    WHERE FECHA >= @ano || '0101' AND FECHA <= @ano || '1231' AND trim(C_BANCO) <> '7777'
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND (@servicio = 0
           OR (@servicio IN (98, 99)
               AND tipo_servicio IN (SELECT C_SERVIcio FROM servicios WHERE sw_calculos = @servicio - 97))
           OR (@servicio NOT IN (98, 99) AND tipo_servicio = @servicio)))
SELECT CAST(substr(FECHA, 1, 6) AS INTEGER) AS Fecha, total(monto) AS Suma, count(*) AS Tot_m,
       CASE WHEN total(monto) > 0 THEN 100 * total(gan) / total(monto) ELSE 0 END AS Porcen,
       total(gan) AS Totgan
FROM f GROUP BY substr(FECHA, 1, 6) ORDER BY Fecha;

WITH f AS (
    SELECT C_PROVEEDOR, recibido AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= @ano || '0101' AND FECHA <= @ano || '1231' AND trim(C_BANCO) <> '7777'
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
    WHERE FECHA >= @ano || '0101' AND FECHA <= @ano || '1231' AND trim(C_BANCO) <> '7777'
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
    WHERE FECHA >= @ano || '0101' AND FECHA <= @ano || '1231' AND trim(C_BANCO) NOT IN ('', '7777')
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
    WHERE FECHA >= @ano || '0101' AND FECHA <= @ano || '1231' AND tipo_operacion = 3
      AND trim(C_BANCO) NOT IN ('', '7777')
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND (@servicio = 0
           OR (@servicio IN (98, 99)
               AND tipo_servicio IN (SELECT C_SERVIcio FROM servicios WHERE sw_calculos = @servicio - 97))
           OR (@servicio NOT IN (98, 99) AND tipo_servicio = @servicio)))
SELECT CAST(substr(FECHA, 1, 6) AS INTEGER) AS Fecha, total(monto) AS Suma
FROM f GROUP BY substr(FECHA, 1, 6) ORDER BY Fecha;

WITH f AS (
    SELECT tipo_servicio, recibido AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= @ano || '0101' AND FECHA <= @ano || '1231' AND trim(C_BANCO) <> '7777'
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND (@servicio = 0
           OR (@servicio IN (98, 99)
               AND tipo_servicio IN (SELECT C_SERVIcio FROM servicios WHERE sw_calculos = @servicio - 97))
           OR (@servicio NOT IN (98, 99) AND tipo_servicio = @servicio)))
SELECT tipo_servicio AS servi, total(monto) AS Suma
FROM f GROUP BY tipo_servicio ORDER BY Suma DESC, servi;
