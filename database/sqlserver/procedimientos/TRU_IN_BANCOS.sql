-- A bank with the operator's code and name; an empty code (0) takes the next
-- code above the largest; an existing code keeps its key and takes the name.
CREATE PROCEDURE dbo.TRU_IN_BANCOS
    @codigo int = 0,
    @descripcion varchar(60) = ''
AS
BEGIN
    SET NOCOUNT ON;
    BEGIN TRANSACTION;
    IF COALESCE(@codigo, 0) = 0
        SELECT @codigo = COALESCE(MAX(C_Banco), 0) + 1 FROM dbo.bancos WITH (UPDLOCK, HOLDLOCK);
    IF EXISTS (SELECT 1 FROM dbo.bancos WITH (UPDLOCK, HOLDLOCK) WHERE C_Banco = @codigo)
        UPDATE dbo.bancos SET D_banco = @descripcion WHERE C_Banco = @codigo;
    ELSE
        INSERT INTO dbo.bancos (C_Banco, D_banco) VALUES (@codigo, @descripcion);
    COMMIT TRANSACTION;
END
