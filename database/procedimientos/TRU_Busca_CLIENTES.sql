-- Finds clients as an operator types them at the counter. The text is found
-- anywhere in the name, capitals and accents or not ("ramir" finds "PEDRO
-- RAMIREZ", "pena" and "peña" find "PEÑA"); a
-- text of digits also finds the client of that code ("12" finds 0012). The
-- text is taken literally: % and _ are no wildcards. An empty text lists
-- every client. Rows come by name in the Spanish order of SQL Server (Ñ
-- after N, capitals alike), then code.
--@param @texto TEXT = ''
SELECT C_CLIENTE, D_cliente, Revisar
FROM clientes
WHERE @texto = ''
   OR instr(pliega(D_cliente), pliega(@texto)) > 0
   OR (@texto NOT GLOB '*[^0-9]*' AND C_CLIENTE = CAST(@texto AS INTEGER))
ORDER BY D_cliente COLLATE ESPANOL, C_CLIENTE;
