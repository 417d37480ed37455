-- The new rate of one service, sent by the rate panel for every row of its
-- grid, with a decimal comma (read by num_coma). A service whose amount comes
-- empty (no calculation gave it one) keeps the rate it had.
--@param @codigo INTEGER = 0
--@param @monto TEXT = ''
UPDATE servicios
SET MONTO = num_coma(@monto)
WHERE C_SERVIcio = @codigo AND trim(COALESCE(@monto, '')) <> '';
