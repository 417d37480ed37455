-- A payment concept's new description (up to 100 characters); the code stays.
--@param @codigo INTEGER = 0
--@param @descripcion TEXT = ''
UPDATE conceptos SET D_CONCEPTO = substr(@descripcion, 1, 100)
WHERE C_CONCEPTO = @codigo;
