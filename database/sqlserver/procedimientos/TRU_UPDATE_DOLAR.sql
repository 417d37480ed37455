-- The plain dollar screen's one price (decimal point) and the moment of the
-- store; the one row is made when missing.
CREATE PROCEDURE dbo.TRU_UPDATE_DOLAR
    @fecha datetime = NULL,
    @valor varchar(30) = '0'
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.dolar SET Fecha = COALESCE(@fecha, GETDATE()), valor = dbo.num_coma(@valor);
    IF NOT EXISTS (SELECT 1 FROM dbo.dolar)
        INSERT INTO dbo.dolar (Fecha, valor) VALUES (COALESCE(@fecha, GETDATE()), dbo.num_coma(@valor));
END
