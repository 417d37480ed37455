-- A service's new description, percentage (decimal comma, read by num_coma)
-- and decimals; way of calculation, letter and status change only when they
-- are sent: left out, they keep what the service had. The letter is kept as
-- one capital, the status as up to 10 characters of free text.
--@param @codigo INTEGER = 0
--@param @descripcion TEXT = ''
--@param @porcentaje TEXT = '0'
--@param @decimales INTEGER = 2
--@param @sw_calculos INTEGER = NULL
--@param @letra TEXT = NULL
--@param @estado TEXT = NULL
UPDATE servicios
SET D_SERVIcio = substr(@descripcion, 1, 60),
    porcentaje = num_coma(@porcentaje),
    decimales = COALESCE(@decimales, decimales),
    sw_calculos = COALESCE(@sw_calculos, sw_calculos),
    letra = COALESCE(upper(substr(trim(@letra), 1, 1)), letra),
    St_servicio = COALESCE(substr(@estado, 1, 10), St_servicio)
WHERE C_SERVIcio = @codigo;
