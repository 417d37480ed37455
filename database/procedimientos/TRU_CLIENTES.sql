-- Every client, by rising code, for the client list of the entry screen.
SELECT C_CLIENTE, D_cliente, Revisar
FROM clientes ORDER BY C_CLIENTE;
