-- The figures of one month, day by day, for the daily statistics: six result
-- sets in a fixed order, each one delivered also when empty, every sum a
-- number (never null):
--   1 by day of the month (dia): dollars received (Suma), transactions
--     (Tot_m), the business's gain (Totgan, g2 of every row counted) and that
--     gain as a percentage of what was received (Porcen, 0 on a day with no
--     dollars);
--   2 by provider (prov), 3 by client (Cliente, with the transactions,
--     cuantos), 4 by paying bank (Banco, the paid rows, the code without its
--     blanks), 6 by service (servi): dollars received, the largest first;
--     sums equal to four decimals by code, since each server adds its floats
--     in an order of its own and may part in the last digit;
--   5 by day: the dollars of the rows paid by direct transfer (type of
--     operation 3).
-- Rows returned to the client count nowhere: their bank is '7777' (blanks
-- around it aside), as the console stores a return. A row not yet paid (no
-- bank) counts with the gain it carries: it is born with g2 equal to what was
-- received, and keeps it until a console completes it. A row is paid when its
-- bank holds more than blanks.
-- Filters: the month as TRU_Mes reads it (a four-digit year and the month, 1
-- to 12, with or without its zero: '202601' and '20261' are January; any other
-- text names no month and matches no row); operator 0 all, 1 or 2; service 0
-- all, 98 every service with sw_calculos 1, 99 every one with sw_calculos 2,
-- any other that service code (the service boxes of the screen send 1 to 4,
-- the codes of the four wallets). Each filter is written once, in
-- fragmentos/, named after TRU_Filtra_Estadistica, the function that holds
-- them on SQL Server, and included where it applies.
--
-- The days come from the index by date in its order, the direct transfers
-- from their own small index (type of operation 3). The sets by code walk
-- the codes of their index one seek at a time (codes), and add up each code's
-- rows of the period through the same index (grupos, materialized so that the
-- walk runs once): no set sorts the rows of the period, only its few totals.
--@param @mes TEXT = ''
--@param @operadora INTEGER = 0
--@param @servicio INTEGER = 0
SELECT CAST(substr(FECHA, 7, 2) AS INTEGER) AS dia, total(recibido) AS Suma, count(*) AS Tot_m,
       CASE WHEN total(recibido) > 0
            THEN 100 * total(g2) / total(recibido) ELSE 0 END AS Porcen,
       total(g2) AS Totgan
FROM MOVIMIENTOS
WHERE FECHA >= TRU_Mes(@mes) || '01' AND FECHA <= TRU_Mes(@mes) || '31'
  --@incluye TRU_Filtra_Estadistica_devueltas.sql
  --@incluye TRU_Filtra_Estadistica_operadora.sql
  --@incluye TRU_Filtra_Estadistica_servicio.sql
GROUP BY FECHA ORDER BY FECHA;

WITH RECURSIVE codigos(codigo) AS (
    SELECT (SELECT min(C_PROVEEDOR) FROM MOVIMIENTOS)
    UNION ALL
    SELECT (SELECT min(C_PROVEEDOR) FROM MOVIMIENTOS WHERE C_PROVEEDOR > codigos.codigo)
    FROM codigos WHERE codigo IS NOT NULL),
grupos AS MATERIALIZED (
    SELECT codigo,
           (SELECT json_array(total(recibido), count(*)) FROM MOVIMIENTOS
            WHERE C_PROVEEDOR = codigos.codigo
              AND FECHA >= TRU_Mes(@mes) || '01' AND FECHA <= TRU_Mes(@mes) || '31'
              --@incluye TRU_Filtra_Estadistica_devueltas.sql
              --@incluye TRU_Filtra_Estadistica_operadora.sql
              --@incluye TRU_Filtra_Estadistica_servicio.sql
            ) AS cifras
    FROM codigos WHERE codigo IS NOT NULL)
SELECT codigo AS prov, json_extract(cifras, '$[0]') AS Suma
FROM grupos WHERE json_extract(cifras, '$[1]') > 0
ORDER BY round(Suma, 4) DESC, prov;

WITH RECURSIVE codigos(codigo) AS (
    SELECT (SELECT min(C_CLIENTE) FROM MOVIMIENTOS)
    UNION ALL
    SELECT (SELECT min(C_CLIENTE) FROM MOVIMIENTOS WHERE C_CLIENTE > codigos.codigo)
    FROM codigos WHERE codigo IS NOT NULL),
grupos AS MATERIALIZED (
    SELECT codigo,
           (SELECT json_array(total(recibido), count(*)) FROM MOVIMIENTOS
            WHERE C_CLIENTE = codigos.codigo
              AND FECHA >= TRU_Mes(@mes) || '01' AND FECHA <= TRU_Mes(@mes) || '31'
              --@incluye TRU_Filtra_Estadistica_devueltas.sql
              --@incluye TRU_Filtra_Estadistica_operadora.sql
              --@incluye TRU_Filtra_Estadistica_servicio.sql
            ) AS cifras
    FROM codigos WHERE codigo IS NOT NULL)
SELECT codigo AS Cliente, json_extract(cifras, '$[0]') AS Suma, json_extract(cifras, '$[1]') AS cuantos
FROM grupos WHERE json_extract(cifras, '$[1]') > 0
ORDER BY round(Suma, 4) DESC, Cliente;

WITH RECURSIVE codigos(codigo) AS (
    SELECT (SELECT min(C_BANCO) FROM MOVIMIENTOS)
    UNION ALL
    SELECT (SELECT min(C_BANCO) FROM MOVIMIENTOS WHERE C_BANCO > codigos.codigo)
    FROM codigos WHERE codigo IS NOT NULL),
grupos AS MATERIALIZED (
    SELECT codigo,
           (SELECT json_array(total(recibido), count(*)) FROM MOVIMIENTOS
            WHERE C_BANCO = codigos.codigo
              AND FECHA >= TRU_Mes(@mes) || '01' AND FECHA <= TRU_Mes(@mes) || '31'
              --@incluye TRU_Filtra_Estadistica_operadora.sql
              --@incluye TRU_Filtra_Estadistica_servicio.sql
            ) AS cifras
    FROM codigos WHERE codigo IS NOT NULL AND trim(codigo) NOT IN ('7777', ''))
SELECT trim(codigo) AS Banco, total(json_extract(cifras, '$[0]')) AS Suma
FROM grupos WHERE json_extract(cifras, '$[1]') > 0
GROUP BY trim(codigo) ORDER BY round(Suma, 4) DESC, Banco;

SELECT CAST(substr(FECHA, 7, 2) AS INTEGER) AS dia, total(recibido) AS Suma
FROM MOVIMIENTOS
WHERE FECHA >= TRU_Mes(@mes) || '01' AND FECHA <= TRU_Mes(@mes) || '31' AND tipo_operacion = 3
  AND (C_BANCO >= '!' AND (C_BANCO < '7777' OR C_BANCO >= '7777!') OR trim(C_BANCO) NOT IN ('7777', ''))
  --@incluye TRU_Filtra_Estadistica_operadora.sql
  --@incluye TRU_Filtra_Estadistica_servicio.sql
GROUP BY FECHA ORDER BY FECHA;

-- The codes of the services bear the name of the column, so that the filter
-- of the service reads them.
WITH RECURSIVE codigos(tipo_servicio) AS (
    SELECT (SELECT min(tipo_servicio) FROM MOVIMIENTOS)
    UNION ALL
    SELECT (SELECT min(tipo_servicio) FROM MOVIMIENTOS WHERE tipo_servicio > codigos.tipo_servicio)
    FROM codigos WHERE tipo_servicio IS NOT NULL),
grupos AS MATERIALIZED (
    SELECT tipo_servicio AS codigo,
           (SELECT json_array(total(recibido), count(*)) FROM MOVIMIENTOS
            WHERE tipo_servicio = codigos.tipo_servicio
              AND FECHA >= TRU_Mes(@mes) || '01' AND FECHA <= TRU_Mes(@mes) || '31'
              --@incluye TRU_Filtra_Estadistica_devueltas.sql
              --@incluye TRU_Filtra_Estadistica_operadora.sql
            ) AS cifras
    FROM codigos
    WHERE tipo_servicio IS NOT NULL
      --@incluye TRU_Filtra_Estadistica_servicio.sql
    )
SELECT codigo AS servi, json_extract(cifras, '$[0]') AS Suma
FROM grupos WHERE json_extract(cifras, '$[1]') > 0
ORDER BY round(Suma, 4) DESC, servi;
