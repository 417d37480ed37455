-- A new payment concept under the next code.
CREATE PROCEDURE dbo.TRU_IN_CONCEPTOS
    @descripcion varchar(100) = ''
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @codigo int;
    BEGIN TRANSACTION;
    SELECT @codigo = COALESCE(MAX(C_CONCEPTO), 0) + 1 FROM dbo.conceptos WITH (UPDLOCK, HOLDLOCK);
    INSERT INTO dbo.conceptos (C_CONCEPTO, D_CONCEPTO) VALUES (@codigo, @descripcion);
    COMMIT TRANSACTION;
END
