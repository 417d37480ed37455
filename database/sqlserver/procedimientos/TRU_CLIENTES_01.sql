-- The client catalogue by rising code: every client for service 0, else the
-- clients with a transaction of that service.
CREATE PROCEDURE dbo.TRU_CLIENTES_01
    @servicio smallint = 0
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_CLIENTE, D_cliente, Revisar
    FROM dbo.clientes AS c
    WHERE COALESCE(@servicio, 0) = 0
       OR EXISTS (SELECT 1 FROM dbo.MOVIMIENTOS AS m
                  WHERE m.C_CLIENTE = c.C_CLIENTE AND m.tipo_servicio = @servicio)
    ORDER BY C_CLIENTE;
END
