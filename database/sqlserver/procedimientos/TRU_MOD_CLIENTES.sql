-- A client's new name and review mark ('9999': under review).
CREATE PROCEDURE dbo.TRU_MOD_CLIENTES
    @codigo int = 0,
    @nombre varchar(40) = '',
    @revisar varchar(10) = ''
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.clientes SET D_cliente = @nombre, Revisar = @revisar WHERE C_CLIENTE = @codigo;
END
