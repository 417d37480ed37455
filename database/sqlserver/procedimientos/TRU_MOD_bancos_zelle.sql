-- A Zelle bank's new name; the code never changes.
CREATE PROCEDURE dbo.TRU_MOD_bancos_zelle
    @codigo int = 0,
    @descripcion varchar(60) = ''
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.bancos_zelle SET D_banco = @descripcion WHERE C_Banco = @codigo;
END
