-- The console queries. Filters: dates compared as text ('202301' means "since
-- January 2023"); payment 0 all, 1 paid (a bank in C_BANCO, '7777' included),
-- 2 not paid; operator 0 all, else that operator; each text given found in
-- the client's name, the reference or the note, capitals and accents or not
-- ("pena" finds "PEÑA"); service 0 all, 98 and 99 the
-- services of sw_calculos 1 and 2, else that service. The filters but the
-- dates are the same for the three queries: this function holds them, and
-- gives each row its version (0 for a row stored before versions existed),
-- which the consoles keep to check their saves against.
CREATE FUNCTION dbo.TRU_Filtra_Consola
    (@pago smallint, @operadora smallint, @texto1 varchar(100), @texto2 varchar(100), @servicio int)
RETURNS TABLE
AS RETURN
    SELECT m.*, COALESCE(c.D_cliente, '') AS Cliente, COALESCE(v.version, 0) AS version_fila
    FROM dbo.MOVIMIENTOS AS m
    LEFT JOIN dbo.MOVIMIENTOS_VERSION AS v ON v.FECHA = m.FECHA AND v.SECUENCIA = m.SECUENCIA
    LEFT JOIN dbo.clientes AS c ON c.C_CLIENTE = m.C_CLIENTE
    WHERE (@pago = 0 OR (@pago = 1 AND LTRIM(RTRIM(m.C_BANCO)) <> '') OR (@pago = 2 AND LTRIM(RTRIM(m.C_BANCO)) = ''))
      AND (@operadora = 0 OR LTRIM(RTRIM(m.operadora)) = CAST(@operadora AS varchar(6)))
      AND (@texto1 = '' OR CHARINDEX(@texto1 COLLATE Latin1_General_CI_AI, COALESCE(c.D_cliente, '') COLLATE Latin1_General_CI_AI) > 0
           OR CHARINDEX(@texto1 COLLATE Latin1_General_CI_AI, m.REFERENCIA COLLATE Latin1_General_CI_AI) > 0 OR CHARINDEX(@texto1 COLLATE Latin1_General_CI_AI, m.obs COLLATE Latin1_General_CI_AI) > 0)
      AND (@texto2 = '' OR CHARINDEX(@texto2 COLLATE Latin1_General_CI_AI, COALESCE(c.D_cliente, '') COLLATE Latin1_General_CI_AI) > 0
           OR CHARINDEX(@texto2 COLLATE Latin1_General_CI_AI, m.REFERENCIA COLLATE Latin1_General_CI_AI) > 0 OR CHARINDEX(@texto2 COLLATE Latin1_General_CI_AI, m.obs COLLATE Latin1_General_CI_AI) > 0)
      AND (@servicio = 0
           OR (@servicio IN (98, 99)
               AND m.tipo_servicio IN (SELECT C_SERVIcio FROM dbo.servicios WHERE sw_calculos = @servicio - 97))
           OR (@servicio NOT IN (98, 99) AND m.tipo_servicio = @servicio));
