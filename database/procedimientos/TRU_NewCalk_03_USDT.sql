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

WITH RECURSIVE meses(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM meses WHERE n < 12),
periodos AS MATERIALIZED (SELECT strftime('%Y%m', GETDATE(), 'start of month', '-' || (12 - n) || ' months') AS mes FROM meses),
grupos AS MATERIALIZED (
    SELECT mes,
           (SELECT json_array(total(enviado), count(*), total(g2))
            FROM MOVIMIENTOS
            WHERE FECHA >= periodos.mes || '01' AND FECHA <= periodos.mes || '31'
              --@incluye TRU_Filtra_Estadistica_devueltas.sql
              --@incluye TRU_Filtra_Estadistica_operadora.sql
              --@incluye TRU_Filtra_Estadistica_servicio_USDT.sql
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
           (SELECT json_array(total(enviado), count(*)) FROM MOVIMIENTOS
            WHERE C_PROVEEDOR = codigos.codigo
              AND FECHA >= strftime('%Y%m01', GETDATE(), 'start of month', '-11 months')
              AND FECHA <= strftime('%Y%m31', GETDATE())
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
              AND FECHA >= strftime('%Y%m01', GETDATE(), 'start of month', '-11 months')
              AND FECHA <= strftime('%Y%m31', GETDATE())
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
              AND FECHA >= strftime('%Y%m01', GETDATE(), 'start of month', '-11 months')
              AND FECHA <= strftime('%Y%m31', GETDATE())
              --@incluye TRU_Filtra_Estadistica_operadora.sql
              --@incluye TRU_Filtra_Estadistica_servicio_USDT.sql
            ) AS cifras
    FROM codigos WHERE codigo IS NOT NULL AND trim(codigo) NOT IN ('7777', ''))
SELECT trim(codigo) AS Banco, total(json_extract(cifras, '$[0]')) AS Suma
FROM grupos WHERE json_extract(cifras, '$[1]') > 0
GROUP BY trim(codigo) ORDER BY round(Suma, 4) DESC, Banco;

WITH dias AS MATERIALIZED (
    SELECT FECHA, total(enviado) AS suma
    FROM MOVIMIENTOS
    WHERE FECHA >= strftime('%Y%m01', GETDATE(), 'start of month', '-11 months')
      AND FECHA <= strftime('%Y%m31', GETDATE()) AND tipo_operacion = 3
      AND (C_BANCO >= '!' AND (C_BANCO < '7777' OR C_BANCO >= '7777!') OR trim(C_BANCO) NOT IN ('7777', ''))
      --@incluye TRU_Filtra_Estadistica_operadora.sql
      --@incluye TRU_Filtra_Estadistica_servicio_USDT.sql
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
           (SELECT json_array(total(enviado), count(*)) FROM MOVIMIENTOS
            WHERE tipo_servicio = codigos.tipo_servicio
              AND FECHA >= strftime('%Y%m01', GETDATE(), 'start of month', '-11 months')
              AND FECHA <= strftime('%Y%m31', GETDATE())
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
