-- Every client, by rising code.
CREATE PROCEDURE dbo.TRU_CLIENTES
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_CLIENTE, D_cliente, Revisar FROM dbo.clientes ORDER BY C_CLIENTE;
END
