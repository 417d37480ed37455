-- What a client has used: how many transactions of each service, over his
-- whole history, most used first; then his review mark as Ruta ('9999' under
-- review), one row also for an unknown client.
--@param @cliente TEXT = ''
SELECT COALESCE(s.D_SERVIcio, 'SERVICIO ' || m.tipo_servicio) AS Servicio, COUNT(*) AS cuantos
FROM MOVIMIENTOS AS m
LEFT JOIN servicios AS s ON s.C_SERVIcio = m.tipo_servicio
WHERE m.C_CLIENTE = CAST(@cliente AS INTEGER)
GROUP BY m.tipo_servicio
ORDER BY cuantos DESC, m.tipo_servicio;

SELECT COALESCE((SELECT Revisar FROM clientes WHERE C_CLIENTE = CAST(@cliente AS INTEGER)), '') AS Ruta;
