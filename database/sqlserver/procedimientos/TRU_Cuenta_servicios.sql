-- What a client has used, most used service first; then his review mark as
-- Ruta, one row also for an unknown client.
CREATE PROCEDURE dbo.TRU_Cuenta_servicios
    @cliente varchar(10) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SELECT COALESCE(s.D_SERVIcio, 'SERVICIO ' + CAST(m.tipo_servicio AS varchar(10))) AS Servicio, COUNT(*) AS cuantos
    FROM dbo.MOVIMIENTOS AS m
    LEFT JOIN dbo.servicios AS s ON s.C_SERVIcio = m.tipo_servicio
    WHERE m.C_CLIENTE = TRY_CAST(@cliente AS int)
    GROUP BY m.tipo_servicio, s.D_SERVIcio
    ORDER BY cuantos DESC, m.tipo_servicio;
    SELECT COALESCE((SELECT Revisar FROM dbo.clientes WHERE C_CLIENTE = TRY_CAST(@cliente AS int)), '') AS Ruta;
END
