-- By the day of the transaction; rows by date, then sequence.
CREATE PROCEDURE dbo.TRU_CONSULTA_1127
    @desde varchar(8) = '', @hasta varchar(8) = '', @pago smallint = 0, @operadora smallint = 0,
    @texto1 varchar(100) = '', @texto2 varchar(100) = '', @servicio int = 0
AS
BEGIN
    SET NOCOUNT ON;
    SELECT FECHA AS Fecha, SECUENCIA AS secuenciA, C_CLIENTE, Cliente, enviado AS Enviado, recibido,
           C_PROVEEDOR AS C_proveedor, bancozelle, tipo_servicio, C_BANCO AS C_Banco, confirmacion, pago AS Pago,
           REFERENCIA AS referencia, operadora, tipo_operacion, obs AS OBS, ganancia AS Ganancia, g1 AS G1,
           g2 AS G2, g3 AS G3, fecha_pago, hora_pago, dolar1, dolar2, version_fila
    FROM dbo.TRU_Filtra_Consola(@pago, @operadora, @texto1, @texto2, @servicio)
    WHERE FECHA >= @desde AND FECHA <= @hasta
    ORDER BY FECHA, SECUENCIA;
END
