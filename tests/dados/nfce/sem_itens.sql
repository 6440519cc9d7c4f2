-- A sale without items, walk-in customer, nothing paid.
INSERT INTO vendas (nfce, cupom, data, hora, cliente, nomecliente)
    VALUES (1234, 77, '2026-11-15', '10:20:30', 1, 'CONSUMIDOR FINAL');
