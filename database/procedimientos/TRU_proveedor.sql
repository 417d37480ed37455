-- Every provider, by rising code, with the percentages and the gift balance.
SELECT C_proveedor, D_proveedor, clave_pro, porgan, Comision, regalo AS Regalo, ultregalo
FROM proveedor ORDER BY C_proveedor;
