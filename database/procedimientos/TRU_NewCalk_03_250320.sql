-- The figures of one year, month by month, for the monthly summary. First
-- the calendar: the twelve months of the year as the numbers yyyymm (Fecha),
-- the rows of the screen, also the months without movements. Then the six
-- sets of TRU_NewCalk_02_250320, with the rules and filters told there, over
-- the whole year, where the sets by day are by month (Fecha, yyyymm):
--   1 by month: received (Suma), transactions (Tot_m), gain (Totgan),
--     percentage of gain (Porcen); 2 by provider; 3 by client (cuantos);
--   4 by paying bank; 5 by month, the direct transfers; 6 by service.
-- The year is four digits ('2025'); any other text names no year, the
-- calendar stands and no row is matched (TRU_Ano). Each month of set 1 is added up
-- over its own range of the index by date (periodos, grupos), and only the
-- months with movements are listed.
--@param @ano TEXT = ''
--@param @operadora INTEGER = 0
--@param @servicio INTEGER = 0
WITH RECURSIVE meses(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM meses WHERE n < 12)
SELECT CAST(@ano AS INTEGER) * 100 + n AS Fecha FROM meses ORDER BY n;

WITH RECURSIVE meses(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM meses WHERE n < 12),
periodos AS MATERIALIZED (SELECT TRU_Ano(@ano) || printf('%02d', n) AS mes FROM meses),
grupos AS MATERIALIZED (
    SELECT mes,
           (SELECT json_array(total(recibido), count(*), total(g2))
            FROM MOVIMIENTOS
            WHERE FECHA >= periodos.mes || '01' AND FECHA <= periodos.mes || '31'
              --@incluye TRU_Filtra_Estadistica_devueltas.sql
              --@incluye TRU_Filtra_Estadistica_operadora.sql
              --@incluye TRU_Filtra_Estadistica_servicio.sql
            ) AS cifras
    FROM periodos)
SELECT CAST(mes AS INTEGER) AS Fecha, json_extract(cifras, '$[0]') AS Suma, json_extract(cifras, '$[1]') AS Tot_m,
       CASE WHEN json_extract(cifras, '$[0]') > 0
            THEN 100 * json_extract(cifras, '$[2]') / json_extract(cifras, '$[0]') ELSE 0 END AS Porcen,
       json_extract(cifras, '$[2]') AS Totgan
FROM grupos WHERE json_extract(cifras, '$[1]') > 0 ORDER BY Fecha;

WITH RECURSIVE codigos(codigo) AS (
    SELECT (SELECT min(C_PROVEEDOR) FROM MOVIMIENTOS)
    UNION ALL
    SELECT (SELECT min(C_PROVEEDOR) FROM MOVIMIENTOS WHERE C_PROVEEDOR > codigos.codigo)
    FROM codigos WHERE codigo IS NOT NULL),
grupos AS MATERIALIZED (
    SELECT codigo,
           (SELECT json_array(total(recibido), count(*)) FROM MOVIMIENTOS
            WHERE C_PROVEEDOR = codigos.codigo
              AND FECHA >= TRU_Ano(@ano) || '0101' AND FECHA <= TRU_Ano(@ano) || '1231'
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
              AND FECHA >= TRU_Ano(@ano) || '0101' AND FECHA <= TRU_Ano(@ano) || '1231'
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
              AND FECHA >= TRU_Ano(@ano) || '0101' AND FECHA <= TRU_Ano(@ano) || '1231'
              --@incluye TRU_Filtra_Estadistica_operadora.sql
              --@incluye TRU_Filtra_Estadistica_servicio.sql
            ) AS cifras
    FROM codigos WHERE codigo IS NOT NULL AND trim(codigo) NOT IN ('7777', ''))
SELECT trim(codigo) AS Banco, total(json_extract(cifras, '$[0]')) AS Suma
FROM grupos WHERE json_extract(cifras, '$[1]') > 0
GROUP BY trim(codigo) ORDER BY round(Suma, 4) DESC, Banco;

WITH dias AS MATERIALIZED (
    SELECT FECHA, total(recibido) AS suma
    FROM MOVIMIENTOS
    WHERE FECHA >= TRU_Ano(@ano) || '0101' AND FECHA <= TRU_Ano(@ano) || '1231' AND tipo_operacion = 3
      AND (C_BANCO >= '!' AND (C_BANCO < '7777' OR C_BANCO >= '7777!') OR trim(C_BANCO) NOT IN ('7777', ''))
      --@incluye TRU_Filtra_Estadistica_operadora.sql
      --@incluye TRU_Filtra_Estadistica_servicio.sql
    GROUP BY FECHA)
SELECT CAST(substr(FECHA, 1, 6) AS INTEGER) AS Fecha, total(suma) AS Suma
FROM dias GROUP BY substr(FECHA, 1, 6) ORDER BY Fecha;

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
              AND FECHA >= TRU_Ano(@ano) || '0101' AND FECHA <= TRU_Ano(@ano) || '1231'
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
