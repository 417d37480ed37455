-- A new provider under the next code above the largest one, with its name (up
-- to 30 characters) and group key (up to 5); percentages, commission and gift
-- balance start at 0 and are set by changing the row.
--@param @nombre TEXT = ''
--@param @clave TEXT = ''
INSERT INTO proveedor (C_proveedor, D_proveedor, clave_pro)
SELECT COALESCE(MAX(C_proveedor), 0) + 1, substr(@nombre, 1, 30), substr(@clave, 1, 5)
FROM proveedor;
