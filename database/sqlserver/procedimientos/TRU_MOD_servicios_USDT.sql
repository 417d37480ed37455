-- A USDT row's description and prices (decimal comma) and, when sent, its
-- divide flag. A price change stamps the moment of the last price update.
CREATE PROCEDURE dbo.TRU_MOD_servicios_USDT
    @codigo int = 0,
    @descripcion varchar(60) = '',
    @compra varchar(30) = '0',
    @venta varchar(30) = '0',
    @div int = NULL
AS
BEGIN
    SET NOCOUNT ON;
    IF EXISTS (SELECT 1 FROM dbo.servicios_usdt
               WHERE C_SERVIcio = @codigo
                 AND (compra <> dbo.num_coma(@compra) OR venta <> dbo.num_coma(@venta)))
        UPDATE dbo.parametros SET Fecha_Compraventas = GETDATE();
    UPDATE dbo.servicios_usdt
    SET D_SERVIcio = @descripcion, compra = dbo.num_coma(@compra), venta = dbo.num_coma(@venta),
        div = COALESCE(@div, div)
    WHERE C_SERVIcio = @codigo;
END
