-- The providers' notifications for the rate panel, newest first (by the moment
-- of the message, then by the order they were written), the moment shown the
-- business's way, dd/mm/yyyy hh:mm:ss. Nothing is marked as read here.
SELECT Codigo_proveedor, Nombre, titulo, mensaje,
       COALESCE(strftime('%d/%m/%Y %H:%M:%S', Fecha), Fecha) AS Fecha, tipo, leida
FROM notificaciones ORDER BY notificaciones.Fecha DESC, rowid DESC;
