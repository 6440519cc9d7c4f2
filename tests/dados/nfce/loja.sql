-- The shop of the NFC-e tests: a product catalogue over every tax code (CST), with accents,
-- a quote, blanks around a name, an empty and a short NCM; two customers; receipt messages
-- and the operator.
INSERT INTO produtos (codigo, nome, ncm, cest, cfop, unidade, CST, icms, reducao_base) VALUES
    (1, 'Arroz tipo 1 5kg', '10063021', '', '5102', 'un', 0, 1800, 0),
    (2, 'Feijão carioca 1kg', '07133319', '', '5102', 'un', 2, 1800, 33.33),
    (3, 'Leite UHT integral 1L', '04012010', '', '5102', 'un', 4, 0, 0),
    (4, 'Refrigerante cola 2L', '22021000', '0300700', '5405', 'un', 7, 0, 0),
    (5, 'Café torrado 500g', '09012100', '', '5102', 'un', 10, 0, 0),
    (6, 'Biscoito recheado', '19053100', '', '5102', 'un', 11, 0, 0),
    (7, 'Sabão em pó 1kg', '34022000', '', '5102', 'un', 16, 0, 0),
    (8, 'Pão francês', '19059090', '', '5102', 'kg', 17, 0, 0),
    (9, 'Cerveja lata 350ml', '22030000', '0302100', '5405', 'un', 18, 0, 0),
    (10, 'Detergente 500ml', '', '', '5102', 'un', 19, 0, 0),
    (11, 'Açúcar D''Ouro 5kg', '1701990', '', '5102', 'un', 0, 700, 0),
    (12, '  Prego 17x21 ', '73170090', '', '5102', 'kg', 11, 0, 0),
    (13, 'Vela decorativa', '34060000', '', '5102', 'un', 5, 0, 0);
INSERT INTO clientes (codigo, nome, cgc) VALUES
    (25, 'Maria D''Ávila', '123.456.789-09'),
    (30, 'Mercadinho São José Ltda', '18.123.456/0001-04');
INSERT INTO empresa (mens1, mens2) VALUES ('Obrigado pela preferência', 'Volte sempre');
INSERT INTO caixas (nome) VALUES ('Maria');
