-- The providers' notifications, newest first; those of one moment by provider
-- and title. The moment as dd/mm/yyyy hh:mm:ss.
CREATE PROCEDURE dbo.Ramil_lista_Notificaciones
AS
BEGIN
    SET NOCOUNT ON;
    SELECT n.Codigo_proveedor, n.Nombre, n.titulo, n.mensaje,
           CONVERT(varchar(10), n.Fecha, 103) + ' ' + CONVERT(varchar(8), n.Fecha, 108) AS Fecha, n.tipo, n.leida
    FROM dbo.notificaciones AS n ORDER BY n.Fecha DESC, n.Codigo_proveedor, n.titulo;
END
