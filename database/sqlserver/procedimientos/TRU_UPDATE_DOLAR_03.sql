-- The day's dollar; it stamps the moment of the last update of the rates.
CREATE PROCEDURE dbo.TRU_UPDATE_DOLAR_03
    @dolar varchar(30) = '0'
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.parametros SET Dolar = dbo.num_coma(@dolar), Fecha = GETDATE();
    IF NOT EXISTS (SELECT 1 FROM dbo.parametros)
        INSERT INTO dbo.parametros (Clave, Fecha, Fecha_Compraventas, Dolar)
        VALUES ('', GETDATE(), NULL, dbo.num_coma(@dolar));
END
