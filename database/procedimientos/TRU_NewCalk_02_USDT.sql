-- The figures of one month of the USDT services (codes 50 and up), day by
-- day, for the daily USDT statistics: the six sets of TRU_NewCalk_02_250320,
-- in the same order and with the same rules, but the money is what the
-- client sent (enviado), in the service's own currency, and the set by client
-- carries no count of transactions. Service filter: 0 every USDT service, any
-- other value that service code alone (98 and 99 are ordinary codes here; the
-- service boxes of the screen send 1 to 4, which select nothing).
--@param @mes TEXT = ''
--@param @operadora INTEGER = 0
--@param @servicio INTEGER = 0
SELECT CAST(substr(FECHA, 7, 2) AS INTEGER) AS dia, total(enviado) AS Suma, count(*) AS Tot_m,
       CASE WHEN total(enviado) > 0
            THEN 100 * total(g2) / total(enviado) ELSE 0 END AS Porcen,
       total(g2) AS Totgan
FROM MOVIMIENTOS
WHERE FECHA >= TRU_Mes(@mes) || '01' AND FECHA <= TRU_Mes(@mes) || '31'
  --@incluye TRU_Filtra_Estadistica_devueltas.sql
  --@incluye TRU_Filtra_Estadistica_operadora.sql
  --@incluye TRU_Filtra_Estadistica_servicio_USDT.sql
GROUP BY FECHA ORDER BY FECHA;

WITH RECURSIVE codigos(codigo) AS (
    SELECT (SELECT min(C_PROVEEDOR) FROM MOVIMIENTOS)
    UNION ALL
    SELECT (SELECT min(C_PROVEEDOR) FROM MOVIMIENTOS WHERE C_PROVEEDOR > codigos.codigo)
    FROM codigos WHERE codigo IS NOT NULL),
grupos AS MATERIALIZED (
    SELECT codigo,
           (SELECT json_array(total(enviado), count(*)) FROM MOVIMIENTOS
            WHERE C_PROVEEDOR = codigos.codigo
              AND FECHA >= TRU_Mes(@mes) || '01' AND FECHA <= TRU_Mes(@mes) || '31'
              --@incluye TRU_Filtra_Estadistica_devueltas.sql
              --@incluye TRU_Filtra_Estadistica_operadora.sql
              --@incluye TRU_Filtra_Estadistica_servicio_USDT.sql
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
           (SELECT json_array(total(enviado), count(*)) FROM MOVIMIENTOS
            WHERE C_CLIENTE = codigos.codigo
              AND FECHA >= TRU_Mes(@mes) || '01' AND FECHA <= TRU_Mes(@mes) || '31'
              --@incluye TRU_Filtra_Estadistica_devueltas.sql
              --@incluye TRU_Filtra_Estadistica_operadora.sql
              --@incluye TRU_Filtra_Estadistica_servicio_USDT.sql
            ) AS cifras
    FROM codigos WHERE codigo IS NOT NULL)
SELECT codigo AS Cliente, json_extract(cifras, '$[0]') AS Suma
FROM grupos WHERE json_extract(cifras, '$[1]') > 0
ORDER BY round(Suma, 4) DESC, Cliente;

WITH RECURSIVE codigos(codigo) AS (
    SELECT (SELECT min(C_BANCO) FROM MOVIMIENTOS)
    UNION ALL
    SELECT (SELECT min(C_BANCO) FROM MOVIMIENTOS WHERE C_BANCO > codigos.codigo)
    FROM codigos WHERE codigo IS NOT NULL),
grupos AS MATERIALIZED (
    SELECT codigo,
           (SELECT json_array(total(enviado), count(*)) FROM MOVIMIENTOS
            WHERE C_BANCO = codigos.codigo
              AND FECHA >= TRU_Mes(@mes) || '01' AND FECHA <= TRU_Mes(@mes) || '31'
              --@incluye TRU_Filtra_Estadistica_operadora.sql
              --@incluye TRU_Filtra_Estadistica_servicio_USDT.sql
            ) AS cifras
    FROM codigos WHERE codigo IS NOT NULL AND trim(codigo) NOT IN ('7777', ''))
SELECT trim(codigo) AS Banco, total(json_extract(cifras, '$[0]')) AS Suma
FROM grupos WHERE json_extract(cifras, '$[1]') > 0
GROUP BY trim(codigo) ORDER BY round(Suma, 4) DESC, Banco;

SELECT CAST(substr(FECHA, 7, 2) AS INTEGER) AS dia, total(enviado) AS Suma
FROM MOVIMIENTOS
WHERE FECHA >= TRU_Mes(@mes) || '01' AND FECHA <= TRU_Mes(@mes) || '31' AND tipo_operacion = 3
  AND (C_BANCO >= '!' AND (C_BANCO < '7777' OR C_BANCO >= '7777!') OR trim(C_BANCO) NOT IN ('7777', ''))
  --@incluye TRU_Filtra_Estadistica_operadora.sql
  --@incluye TRU_Filtra_Estadistica_servicio_USDT.sql
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
           (SELECT json_array(total(enviado), count(*)) FROM MOVIMIENTOS
            WHERE tipo_servicio = codigos.tipo_servicio
              AND FECHA >= TRU_Mes(@mes) || '01' AND FECHA <= TRU_Mes(@mes) || '31'
              --@incluye TRU_Filtra_Estadistica_devueltas.sql
              --@incluye TRU_Filtra_Estadistica_operadora.sql
            ) AS cifras
    FROM codigos
    WHERE tipo_servicio IS NOT NULL
      --@incluye TRU_Filtra_Estadistica_servicio_USDT.sql
    )
SELECT codigo AS servi, json_extract(cifras, '$[0]') AS Suma
FROM grupos WHERE json_extract(cifras, '$[1]') > 0
ORDER BY round(Suma, 4) DESC, servi;
