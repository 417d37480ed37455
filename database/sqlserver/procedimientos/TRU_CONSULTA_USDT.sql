-- The USDT transactions (services from 50 up), by the day of the transaction.
CREATE PROCEDURE dbo.TRU_CONSULTA_USDT
    @desde varchar(8) = '', @hasta varchar(8) = '', @pago smallint = 0, @operadora smallint = 0,
    @texto1 varchar(100) = '', @texto2 varchar(100) = '', @servicio int = 0
AS
BEGIN
    SET NOCOUNT ON;
    SELECT FECHA AS Fecha, SECUENCIA AS secuenciA, C_CLIENTE, enviado AS Enviado, recibido,
           C_PROVEEDOR AS C_proveedor, tipo_servicio, C_BANCO AS C_Banco, confirmacion, pago AS Pago,
           REFERENCIA AS referencia, operadora, tipo_operacion, obs AS OBS, ganancia AS Ganancia, version_fila
    FROM dbo.TRU_Filtra_Consola(@pago, @operadora, @texto1, @texto2, @servicio)
    WHERE FECHA >= @desde AND FECHA <= @hasta AND tipo_servicio >= 50
    ORDER BY FECHA, SECUENCIA;
END
