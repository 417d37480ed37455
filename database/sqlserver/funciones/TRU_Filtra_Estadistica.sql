-- The rows of a period that the statistics add up, with the money of each
-- (recibido, or on the USDT screens enviado), the business's gain (g2 as the
-- row carries it: a row not yet paid was born with g2 equal to what was
-- received) and the bank without its blanks. Returned rows (bank '7777',
-- blanks aside, as the console stores a return) are left out. Operator
-- 0 all, 1 or 2. Service: 0 all, 98 and 99 the services of sw_calculos 1 and
-- 2, any other that code; on the USDT screens only codes from 50, and every
-- value but 0 is that code alone.
CREATE FUNCTION dbo.TRU_Filtra_Estadistica
    (@desde varchar(12), @hasta varchar(12), @operadora smallint, @servicio int, @usdt bit)
RETURNS TABLE
AS RETURN
    SELECT FECHA, C_PROVEEDOR, C_CLIENTE, LTRIM(RTRIM(C_BANCO)) AS C_BANCO, tipo_servicio, tipo_operacion,
           CASE WHEN @usdt = 1 THEN enviado ELSE recibido END AS monto, g2 AS gan
    FROM dbo.MOVIMIENTOS
    WHERE FECHA >= @desde AND FECHA <= @hasta AND LTRIM(RTRIM(C_BANCO)) <> '7777'
      AND (@operadora = 0 OR LTRIM(RTRIM(operadora)) = CAST(@operadora AS varchar(6)))
      AND ((@usdt = 0
            AND (@servicio = 0
                 OR (@servicio IN (98, 99)
                     AND tipo_servicio IN (SELECT C_SERVIcio FROM dbo.servicios WHERE sw_calculos = @servicio - 97))
                 OR (@servicio NOT IN (98, 99) AND tipo_servicio = @servicio)))
           OR (@usdt = 1 AND tipo_servicio >= 50 AND (@servicio = 0 OR tipo_servicio = @servicio)));
