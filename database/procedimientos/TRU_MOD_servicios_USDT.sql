-- A USDT row's description, buy and sell prices (decimal comma, read by
-- num_coma) and, when sent, its divide flag; left out (the USDT services
-- screen), div keeps what it had. A change of either price stamps the moment
-- of the last price update that TRU_PARAMETROS returns as Fecha_Compraventas.
--@param @codigo INTEGER = 0
--@param @descripcion TEXT = ''
--@param @compra TEXT = '0'
--@param @venta TEXT = '0'
--@param @div INTEGER = NULL
UPDATE parametros SET Fecha_Compraventas = GETDATE()
WHERE EXISTS (SELECT 1 FROM servicios_usdt
              WHERE C_SERVIcio = @codigo AND (compra <> num_coma(@compra) OR venta <> num_coma(@venta)));
UPDATE servicios_usdt
SET D_SERVIcio = substr(@descripcion, 1, 60), compra = num_coma(@compra), venta = num_coma(@venta),
    div = COALESCE(@div, div)
WHERE C_SERVIcio = @codigo;
