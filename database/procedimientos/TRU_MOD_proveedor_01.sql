-- A provider's new name, group key, share of the gain, commission and gift
-- balance; the code and the last gift (ultregalo) stay. The three numbers come
-- as the screen writes them, with a decimal comma and maybe thousands marks
-- ("1,234,5678" is 1234.5678), and are read by num_coma.
--@param @codigo INTEGER = 0
--@param @nombre TEXT = ''
--@param @clave TEXT = ''
--@param @porgan TEXT = '0'
--@param @comision TEXT = '0'
--@param @regalo TEXT = '0'
UPDATE proveedor
SET D_proveedor = substr(@nombre, 1, 30),
    clave_pro = substr(@clave, 1, 5),
    porgan = num_coma(@porgan),
    Comision = num_coma(@comision),
    regalo = num_coma(@regalo)
WHERE C_proveedor = @codigo;
