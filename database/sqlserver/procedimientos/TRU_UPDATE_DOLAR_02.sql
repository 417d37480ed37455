-- The new rate of one service (decimal comma); an empty amount keeps the rate.
CREATE PROCEDURE dbo.TRU_UPDATE_DOLAR_02
    @codigo int = 0,
    @monto varchar(30) = ''
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.servicios SET MONTO = dbo.num_coma(@monto)
    WHERE C_SERVIcio = @codigo AND LTRIM(RTRIM(COALESCE(@monto, ''))) <> '';
END
