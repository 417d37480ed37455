-- The transactions of the console by date of payment, with the client's name.
-- The dates filter the day of payment (fecha_pago, yyyymmdd, compared as text;
-- '202301' means "since January 2023"), so a row not yet paid, without that
-- day, never comes. A row is paid only while it has a bank: one taken back to
-- unpaid ("8888") keeps its old fecha_pago but is not paid, and is left out. The other filters are those of the console by the day of
-- the transaction (TRU_CONSULTA_1127): payment (a row is paid when it has a
-- bank), operator, the two texts on name, reference or note, and the service
-- with 98 and 99 for the services of sw_calculos 1 and 2.
-- version_fila, last, is the row's version (0 for a row stored before
-- versions existed): the console keeps it to check its saves against.
-- Rows come by day and hour of payment, then by the transaction.
--@param @desde TEXT = ''
--@param @hasta TEXT = ''
--@param @pago INTEGER = 0
--@param @operadora INTEGER = 0
--@param @texto1 TEXT = ''
--@param @texto2 TEXT = ''
--@param @servicio INTEGER = 0
SELECT m.FECHA AS Fecha, m.SECUENCIA AS secuenciA, m.C_CLIENTE, COALESCE(c.D_cliente, '') AS Cliente,
       m.enviado AS Enviado, m.recibido, m.C_PROVEEDOR AS C_proveedor, m.bancozelle, m.tipo_servicio,
       m.C_BANCO AS C_Banco, m.confirmacion, m.pago AS Pago, m.REFERENCIA AS referencia, m.operadora,
       m.tipo_operacion, m.obs AS OBS, m.ganancia AS Ganancia, m.g1 AS G1, m.g2 AS G2, m.g3 AS G3,
       m.fecha_pago, m.hora_pago, COALESCE(v.version, 0) AS version_fila
FROM MOVIMIENTOS m
LEFT JOIN MOVIMIENTOS_VERSION v ON v.FECHA = m.FECHA AND v.SECUENCIA = m.SECUENCIA
LEFT JOIN clientes c ON c.C_CLIENTE = m.C_CLIENTE
WHERE m.fecha_pago <> '' AND m.fecha_pago >= @desde AND m.fecha_pago <= @hasta AND trim(m.C_BANCO) <> ''
  --@incluye TRU_Filtra_Consola.sql
ORDER BY m.fecha_pago, m.hora_pago, m.FECHA, m.SECUENCIA;
