-- The providers' notifications for the rate panel, newest first, those of one
-- moment by provider and title (the same order on both servers); the moment
-- shown the business's way, dd/mm/yyyy hh:mm:ss. Nothing is marked as read here.
SELECT Codigo_proveedor, Nombre, titulo, mensaje,
       COALESCE(strftime('%d/%m/%Y %H:%M:%S', Fecha), Fecha) AS Fecha, tipo, leida
FROM notificaciones ORDER BY notificaciones.Fecha DESC, Codigo_proveedor, titulo;
