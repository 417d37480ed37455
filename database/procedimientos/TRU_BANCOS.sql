-- The banks through which payments leave, by rising code.
SELECT C_Banco, D_banco
FROM bancos ORDER BY C_Banco;
