-- A payment concept's new description.
CREATE PROCEDURE dbo.TRU_MOD_Conceptos
    @codigo int = 0,
    @descripcion varchar(100) = ''
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.conceptos SET D_CONCEPTO = @descripcion WHERE C_CONCEPTO = @codigo;
END
