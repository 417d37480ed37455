-- Stores a client's photograph, the whole file as it was read. A client has
-- one picture: storing another replaces it, so showing him again gives the
-- last one stored.
--@param @cliente INTEGER = 0
--@param @img BLOB = NULL
INSERT INTO fotos (cliente, img) VALUES (@cliente, @img)
ON CONFLICT (cliente) DO UPDATE SET img = excluded.img;
