-- A new client under the next free code, named with up to 40 characters of
-- the text as typed; the new client comes back as one row.
--@param @nombre TEXT = ''
INSERT INTO clientes (C_CLIENTE, D_cliente, Revisar)
SELECT COALESCE(MAX(C_CLIENTE), 0) + 1, substr(@nombre, 1, 40), '' FROM clientes;

SELECT C_CLIENTE, D_cliente
FROM clientes WHERE C_CLIENTE = (SELECT MAX(C_CLIENTE) FROM clientes);
