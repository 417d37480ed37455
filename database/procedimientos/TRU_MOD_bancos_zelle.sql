-- A Zelle bank's new name (up to 60 characters); the code never changes. An
-- unknown code changes nothing.
--@param @codigo INTEGER = 0
--@param @descripcion TEXT = ''
UPDATE bancos_zelle SET D_banco = substr(@descripcion, 1, 60)
WHERE C_Banco = @codigo;
