-- A client's new name (up to 40 characters) and review mark (up to 10; '9999'
-- puts him under review); the code never changes.
--@param @codigo INTEGER = 0
--@param @nombre TEXT = ''
--@param @revisar TEXT = ''
UPDATE clientes SET D_cliente = substr(@nombre, 1, 40), Revisar = substr(@revisar, 1, 10)
WHERE C_CLIENTE = @codigo;
