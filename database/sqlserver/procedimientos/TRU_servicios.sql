-- The wallet services, by rising code.
CREATE PROCEDURE dbo.TRU_servicios
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, St_servicio
    FROM dbo.servicios ORDER BY C_SERVIcio;
END
