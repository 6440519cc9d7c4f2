-- Credit card, debit card and PIX; the customer's own record replaces the CPF typed at the till.
INSERT INTO vendas (nfce, cupom, data, hora, valor, pix, CartaoCred, CartaoDeb, cliente,
                    nomecliente, cgc)
    VALUES (1234, 77, '2026-11-15', '10:20:30', 36.88, 20, 10, 6.88, 30,
            'Mercadinho São José Ltda', '123.456.789-09');
INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal) VALUES
    (1234, 77, 1, 4, 2, 9.49, 18.98),
    (1234, 77, 2, 5, 1, 17.90, 17.90);
