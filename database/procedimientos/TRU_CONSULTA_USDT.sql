-- The USDT transactions (services from 50 up) of the USDT console, by the day
-- they were made. The filters are those of the console (TRU_CONSULTA_1127):
-- dates as text ('202301' means "since January 2023"), payment (a row is
-- paid when it has a bank), operator, the two texts on the client's name,
-- the reference or the note, and the service, where 98 and 99 stand for the
-- USDT services of sw_calculos 1 and 2. The screen takes the client's name
-- from its own cache, so none is returned.
-- version_fila, last, is the row's version (0 for a row stored before
-- versions existed): the console keeps it to check its saves against.
-- Rows come by date, then sequence.
--@param @desde TEXT = ''
--@param @hasta TEXT = ''
--@param @pago INTEGER = 0
--@param @operadora INTEGER = 0
--@param @texto1 TEXT = ''
--@param @texto2 TEXT = ''
--@param @servicio INTEGER = 0
SELECT m.FECHA AS Fecha, m.SECUENCIA AS secuenciA, m.C_CLIENTE, m.enviado AS Enviado, m.recibido,
       m.C_PROVEEDOR AS C_proveedor, m.tipo_servicio, m.C_BANCO AS C_Banco, m.confirmacion, m.pago AS Pago,
       m.REFERENCIA AS referencia, m.operadora, m.tipo_operacion, m.obs AS OBS, m.ganancia AS Ganancia, COALESCE(v.version, 0) AS version_fila
FROM MOVIMIENTOS m
LEFT JOIN MOVIMIENTOS_VERSION v ON v.FECHA = m.FECHA AND v.SECUENCIA = m.SECUENCIA
LEFT JOIN clientes c ON c.C_CLIENTE = m.C_CLIENTE
WHERE m.FECHA >= @desde AND m.FECHA <= @hasta AND m.tipo_servicio >= 50
  --@incluye TRU_Filtra_Consola.sql
ORDER BY m.FECHA, m.SECUENCIA;
