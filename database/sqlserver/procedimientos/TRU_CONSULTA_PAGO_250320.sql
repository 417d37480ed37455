-- By the day of payment; rows by day and hour of payment. Only paid rows
-- (with a bank): a row taken back to unpaid keeps its old day of payment.
CREATE PROCEDURE dbo.TRU_CONSULTA_PAGO_250320
    @desde varchar(8) = '', @hasta varchar(8) = '', @pago smallint = 0, @operadora smallint = 0,
    @texto1 varchar(100) = '', @texto2 varchar(100) = '', @servicio int = 0
AS
BEGIN
    SET NOCOUNT ON;
    SELECT FECHA AS Fecha, SECUENCIA AS secuenciA, C_CLIENTE, Cliente, enviado AS Enviado, recibido,
           C_PROVEEDOR AS C_proveedor, bancozelle, tipo_servicio, C_BANCO AS C_Banco, confirmacion, pago AS Pago,
           REFERENCIA AS referencia, operadora, tipo_operacion, obs AS OBS, ganancia AS Ganancia, g1 AS G1,
           g2 AS G2, g3 AS G3, fecha_pago, hora_pago, version_fila
    FROM dbo.TRU_Filtra_Consola(@pago, @operadora, @texto1, @texto2, @servicio)
    WHERE fecha_pago <> '' AND fecha_pago >= @desde AND fecha_pago <= @hasta AND LTRIM(RTRIM(C_BANCO)) <> ''
    ORDER BY fecha_pago, hora_pago, FECHA, SECUENCIA;
END
