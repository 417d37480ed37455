-- The figures of the last twelve months of the USDT services (codes 50 and
-- up), month by month, for the monthly USDT summary. No period is asked for:
-- the twelve months end with the server's current month. First the calendar,
-- those twelve months as the numbers yyyymm, named fech; then the six sets of
-- TRU_NewCalk_03_250320 with the differences of TRU_NewCalk_02_USDT: the
-- money sent (enviado), no count by client, service 0 every USDT service,
-- any other value that code alone.
--@param @operadora INTEGER = 0
--@param @servicio INTEGER = 0
WITH RECURSIVE meses(n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM meses WHERE n < 11)
SELECT CAST(strftime('%Y%m', GETDATE(), 'start of month', '-' || (11 - n) || ' months') AS INTEGER) AS fech
FROM meses ORDER BY n;

WITH f AS (
    SELECT FECHA, enviado AS monto,
           CASE WHEN trim(C_BANCO) <> '' THEN g2 ELSE 0 END AS gan
    FROM MOVIMIENTOS
    WHERE FECHA >= strftime('%Y%m01', GETDATE(), 'start of month', '-11 months')
      AND FECHA <= strftime('%Y%m31', GETDATE()) AND trim(C_BANCO) <> '7777'
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio))
SELECT CAST(substr(FECHA, 1, 6) AS INTEGER) AS Fecha, total(monto) AS Suma, count(*) AS Tot_m,
       CASE WHEN total(monto) > 0 THEN 100 * total(gan) / total(monto) ELSE 0 END AS Porcen,
       total(gan) AS Totgan
FROM f GROUP BY substr(FECHA, 1, 6) ORDER BY Fecha;

WITH f AS (
    SELECT C_PROVEEDOR, enviado AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= strftime('%Y%m01', GETDATE(), 'start of month', '-11 months')
      AND FECHA <= strftime('%Y%m31', GETDATE()) AND trim(C_BANCO) <> '7777'
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio))
SELECT C_PROVEEDOR AS prov, total(monto) AS Suma
FROM f GROUP BY C_PROVEEDOR ORDER BY Suma DESC, prov;

WITH f AS (
    SELECT C_CLIENTE, enviado AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= strftime('%Y%m01', GETDATE(), 'start of month', '-11 months')
      AND FECHA <= strftime('%Y%m31', GETDATE()) AND trim(C_BANCO) <> '7777'
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio))
SELECT C_CLIENTE AS Cliente, total(monto) AS Suma
FROM f GROUP BY C_CLIENTE ORDER BY Suma DESC, Cliente;

WITH f AS (
    SELECT trim(C_BANCO) AS banco, enviado AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= strftime('%Y%m01', GETDATE(), 'start of month', '-11 months')
      AND FECHA <= strftime('%Y%m31', GETDATE()) AND trim(C_BANCO) NOT IN ('', '7777')
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio))
SELECT banco AS Banco, total(monto) AS Suma
FROM f GROUP BY banco ORDER BY Suma DESC, Banco;

WITH f AS (
    SELECT FECHA, enviado AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= strftime('%Y%m01', GETDATE(), 'start of month', '-11 months')
      AND FECHA <= strftime('%Y%m31', GETDATE()) AND tipo_operacion = 3
      AND trim(C_BANCO) NOT IN ('', '7777')
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio))
SELECT CAST(substr(FECHA, 1, 6) AS INTEGER) AS Fecha, total(monto) AS Suma
FROM f GROUP BY substr(FECHA, 1, 6) ORDER BY Fecha;

WITH f AS (
    SELECT tipo_servicio, enviado AS monto
    FROM MOVIMIENTOS
    WHERE FECHA >= strftime('%Y%m01', GETDATE(), 'start of month', '-11 months')
      AND FECHA <= strftime('%Y%m31', GETDATE()) AND trim(C_BANCO) <> '7777'
      AND (@operadora = 0 OR trim(operadora) = CAST(@operadora AS TEXT))
      AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio))
SELECT tipo_servicio AS servi, total(monto) AS Suma
FROM f GROUP BY tipo_servicio ORDER BY Suma DESC, servi;
