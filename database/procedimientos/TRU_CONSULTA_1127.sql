-- The transactions of the console, by the day they were made, with the
-- client's name. The filters, as the console sends them:
--   dates: from and to, yyyymmdd, compared as text, so that the six
--     characters '202301' mean "since January 2023";
--   payment: 0 all, 1 paid, 2 not paid; a row is paid when it has a bank
--     (C_BANCO not empty): a returned row, '7777', counts as paid;
--   operator: 0 all, 1 or 2 the rows of that operator;
--   texts: each text given must be found, in capitals or not, in the client's
--     name, the bank reference or the note; an empty text filters nothing;
--   service: 0 all, 98 every service priced from the day's dollar
--     (sw_calculos 1), 99 every one with sw_calculos 2, else that service.
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
SELECT m.FECHA AS Fecha, m.SECUENCIA AS secuenciA, m.C_CLIENTE, COALESCE(c.D_cliente, '') AS Cliente,
       m.enviado AS Enviado, m.recibido, m.C_PROVEEDOR AS C_proveedor, m.bancozelle, m.tipo_servicio,
       m.C_BANCO AS C_Banco, m.confirmacion, m.pago AS Pago, m.REFERENCIA AS referencia, m.operadora,
       m.tipo_operacion, m.obs AS OBS, m.ganancia AS Ganancia, m.g1 AS G1, m.g2 AS G2, m.g3 AS G3,
       m.fecha_pago, m.hora_pago, m.dolar1, m.dolar2, COALESCE(v.version, 0) AS version_fila
FROM MOVIMIENTOS m
LEFT JOIN MOVIMIENTOS_VERSION v ON v.FECHA = m.FECHA AND v.SECUENCIA = m.SECUENCIA
LEFT JOIN clientes c ON c.C_CLIENTE = m.C_CLIENTE
WHERE m.FECHA >= @desde AND m.FECHA <= @hasta
  --@incluye TRU_Filtra_Consola.sql
ORDER BY m.FECHA, m.SECUENCIA;
