-- Every tax code, a cancelled item (4), an unknown code (13), a weighed item and a quantity
-- over a thousand; a customer with CPF; exact cash.
INSERT INTO vendas (nfce, cupom, data, hora, valor, Dinheiro, cliente, nomecliente, cgc)
    VALUES (1234, 77, '2026-11-15', '10:20:30', 333.78, 333.78, 25, 'Maria D''Ávila',
            '123.456.789-09');
INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal, situacao) VALUES
    (1234, 77, 1, 1, 3, 1.99, 5.97, 'N'),
    (1234, 77, 2, 2, 3, 8.99, 26.97, 'N'),
    (1234, 77, 3, 3, 2, 4.79, 9.58, 'N'),
    (1234, 77, 4, 4, 1, 9.49, 9.49, 'C'),
    (1234, 77, 5, 4, 2, 9.49, 18.98, 'N'),
    (1234, 77, 6, 5, 1, 17.90, 17.90, 'N'),
    (1234, 77, 7, 6, 5, 3.49, 17.45, 'N'),
    (1234, 77, 8, 7, 1, 12.90, 12.90, 'N'),
    (1234, 77, 9, 8, 1.234, 15.90, 19.62, 'N'),
    (1234, 77, 10, 9, 12, 3.99, 47.88, 'N'),
    (1234, 77, 11, 10, 2, 2.59, 5.18, 'N'),
    (1234, 77, 12, 12, 1234.5, 0.10, 123.45, 'N'),
    (1234, 77, 13, 13, 1, 5.00, 5.00, 'N'),
    (1234, 77, 15, 11, 1, 22.90, 22.90, 'N');
