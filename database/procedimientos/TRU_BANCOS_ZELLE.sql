-- The banks behind the Zelle wallet, by rising code.
SELECT C_Banco, D_banco
FROM bancos_zelle ORDER BY C_Banco;
