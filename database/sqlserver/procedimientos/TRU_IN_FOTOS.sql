-- A client's photograph; storing another replaces it.
CREATE PROCEDURE dbo.TRU_IN_FOTOS
    @cliente int = 0,
    @img varbinary(max) = NULL
AS
BEGIN
    SET NOCOUNT ON;
    BEGIN TRANSACTION;
    IF EXISTS (SELECT 1 FROM dbo.fotos WITH (UPDLOCK, HOLDLOCK) WHERE cliente = @cliente)
        UPDATE dbo.fotos SET img = @img WHERE cliente = @cliente;
    ELSE
        INSERT INTO dbo.fotos (cliente, img) VALUES (@cliente, @img);
    COMMIT TRANSACTION;
END
