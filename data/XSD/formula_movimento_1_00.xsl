<?xml version="1.0" encoding="UTF-8"?>
<!--
	Regras entre campos do arquivo de movimento 1.00.

	Datas em ordem, valores que fecham com quantidade e preço, campos que acompanham a natureza da operação e a
	contagem dos registros. Cada bloco é percorrido uma só vez, e dentro de um registro só se olham os filhos dele,
	para que o tempo cresça na proporção do tamanho do arquivo.

	Um campo vazio ou que não é número vira NaN, e nenhuma comparação com NaN é verdadeira: quem fala dele é o
	esquema, não a regra. Datas AAAAMMDD comparam-se como números. (1 - 2 * (x &lt; 0)) tira o sinal de x quando o
	multiplica.

	A saída é uma lista de RESULTADO dentro de TORVA, uma para cada regra que um registro não cumpre.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
	<xsl:output method="xml" encoding="UTF-8" omit-xml-declaration="yes" indent="no"/>

	<xsl:key name="bloco" match="/*/fundo | /*/carteira" use="concat(name(), ' ', header/*[1])"/>

	<!-- A data do movimento do arquivo é a do primeiro cabeçalho. -->
	<xsl:variable name="dataDoArquivo" select="string(/*/*[1]/header/dtposicao)"/>

	<!-- Quanto um valor pode diferir da sua conta, em dinheiro: os arredondamentos de centavos. -->
	<xsl:variable name="folga" select="0.05"/>

	<xsl:template match="/">
		<TORVA>
			<xsl:text>&#10;</xsl:text>
			<xsl:apply-templates select="*/fundo | */carteira"/>
		</TORVA>
	</xsl:template>

	<!-- Um fundo ou uma carteira. position() de cada registro é o seu número dentro da seção. -->
	<xsl:template match="fundo | carteira">
		<xsl:variable name="chave" select="string(header/*[1])"/>
		<xsl:variable name="data" select="number(header/dtposicao)"/>
		<xsl:variable name="registros" select="count(*) - 1"/>

		<xsl:for-each select="header">
			<xsl:if test="dtposicao != $dataDoArquivo">
				<xsl:call-template name="achado">
					<xsl:with-param name="chave" select="$chave"/>
					<xsl:with-param name="campo" select="'dtposicao'"/>
					<xsl:with-param name="texto">A data do movimento deve ser a mesma em todos os cabeçalhos do arquivo</xsl:with-param>
				</xsl:call-template>
			</xsl:if>
			<xsl:if test="qtdregistros &lt; $registros or qtdregistros &gt; $registros">
				<xsl:call-template name="achado">
					<xsl:with-param name="chave" select="$chave"/>
					<xsl:with-param name="campo" select="'qtdregistros'"/>
					<xsl:with-param name="texto">A quantidade de registros não corresponde às linhas do bloco</xsl:with-param>
				</xsl:call-template>
			</xsl:if>
		</xsl:for-each>
		<!-- O bloco anterior vem antes da busca, que copia todos os iguais. -->
		<xsl:if test="(name(preceding-sibling::*[1]) = name() and string(preceding-sibling::*[1]/header/*[1]) = $chave) or count(. | key('bloco', concat(name(), ' ', $chave))[1]) = 2">
			<xsl:for-each select="header">
				<xsl:call-template name="achado">
					<xsl:with-param name="chave" select="$chave"/>
					<xsl:with-param name="campo" select="name(*[1])"/>
					<xsl:with-param name="texto">O mesmo fundo ou a mesma carteira já apareceu antes neste arquivo</xsl:with-param>
				</xsl:call-template>
			</xsl:for-each>
		</xsl:if>

		<xsl:apply-templates select="ativosrf"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="ativosrv"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="opcoesrv"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="futuros"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="swap"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="cotas"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="caixa"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="despesas"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
	</xsl:template>

	<!-- Títulos de renda fixa. -->
	<xsl:template match="ativosrf">
		<xsl:param name="chave"/>
		<xsl:param name="data"/>
		<xsl:if test="natureza != 'VC' and dtvencimento &lt; dtoperacao">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtvencimento'"/>
				<xsl:with-param name="texto">O título venceu antes da data da operação</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="(natureza = 'CP') != (dtretorno != '')">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtretorno'"/>
				<xsl:with-param name="texto">A operação de natureza CP tem data de retorno, e só ela</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="natureza = 'CP' and not(puretorno != '')">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'puretorno'"/>
				<xsl:with-param name="texto">A compromissada deve ter o PU de retorno</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="puretorno &lt;= 0">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'puretorno'"/>
				<xsl:with-param name="texto">O PU de retorno deve ser maior do que zero</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="dtretorno &lt;= dtliquidacao">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtretorno'"/>
				<xsl:with-param name="texto">A data de retorno deve ser posterior à liquidação da operação</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="(natureza = 'VC' or natureza = 'RA') and classeoperacao != 'V'">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'classeoperacao'"/>
				<xsl:with-param name="texto">Vencimento e resgate antecipado entram com a classe V</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:call-template name="classeDoAluguel">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="alugado" select="natureza = 'AL'"/>
		</xsl:call-template>
		<xsl:call-template name="negocio">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="data" select="$data"/>
		</xsl:call-template>
		<xsl:call-template name="valores">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="preco" select="'punegociacao'"/>
		</xsl:call-template>
	</xsl:template>

	<!-- Ações e outros ativos de bolsa. -->
	<xsl:template match="ativosrv">
		<xsl:param name="chave"/>
		<xsl:param name="data"/>
		<xsl:if test="(mercadorv = 'AL') != (dtvencaluguel != '')">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtvencaluguel'"/>
				<xsl:with-param name="texto">A operação do mercado AL tem o vencimento do aluguel, e só ela</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="mercadorv = 'AL' and not(txaluguel != '')">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'txaluguel'"/>
				<xsl:with-param name="texto">A operação de aluguel deve ter a taxa</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="dtvencaluguel &lt;= dtoperacao">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtvencaluguel'"/>
				<xsl:with-param name="texto">O vencimento do aluguel deve ser posterior à data da operação</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:call-template name="classeDoAluguel">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="alugado" select="mercadorv = 'AL'"/>
		</xsl:call-template>
		<xsl:call-template name="negocio">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="data" select="$data"/>
		</xsl:call-template>
		<xsl:call-template name="valores">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="preco" select="'punegociacao'"/>
		</xsl:call-template>
	</xsl:template>

	<!-- Opções. -->
	<xsl:template match="opcoesrv">
		<xsl:param name="chave"/>
		<xsl:param name="data"/>
		<xsl:if test="(tpoperacao = 'EX' or tpoperacao = 'VC') and pupremio &gt; 0">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'pupremio'"/>
				<xsl:with-param name="texto">No exercício e no vencimento não há prêmio: ele deve ser zero</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="precoexercicio &lt;= 0">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'precoexercicio'"/>
				<xsl:with-param name="texto">O preço de exercício deve ser maior do que zero</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:call-template name="contrato">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
		</xsl:call-template>
		<xsl:call-template name="negocio">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="data" select="$data"/>
		</xsl:call-template>
		<xsl:call-template name="valores">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="preco" select="'pupremio'"/>
		</xsl:call-template>
	</xsl:template>

	<!-- Futuros: o ajuste é positivo para quem comprou e viu o preço subir. -->
	<xsl:template match="futuros">
		<xsl:param name="chave"/>
		<xsl:param name="data"/>
		<xsl:variable name="ajuste" select="(puajuste - punegociacao) * quantidade * tamcontrato * (1 - 2 * (classeoperacao = 'V'))"/>
		<xsl:variable name="diferenca" select="vlajuste - $ajuste"/>
		<xsl:variable name="tolerancia" select="1 + 0.0001 * vlajuste * (1 - 2 * (vlajuste &lt; 0))"/>
		<xsl:if test="$diferenca &gt; $tolerancia or $diferenca &lt; -$tolerancia">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'vlajuste'"/>
				<xsl:with-param name="texto">O ajuste do dia não corresponde à diferença dos preços vezes quantidade e tamanho do contrato</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="tamcontrato &lt;= 0">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'tamcontrato'"/>
				<xsl:with-param name="texto">O tamanho do contrato deve ser maior do que zero</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:call-template name="contrato">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
		</xsl:call-template>
		<xsl:call-template name="negocio">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="data" select="$data"/>
		</xsl:call-template>
	</xsl:template>

	<xsl:template match="swap">
		<xsl:param name="chave"/>
		<xsl:param name="data"/>
		<xsl:variable name="diferenca" select="valorliquido - (vlcurvaativo - vlcurvapassivo - valorir)"/>
		<xsl:if test="indexativo = indexpassivo and string(percindexativo) = string(percindexpassivo) and string(txativo) = string(txpassivo)">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'indexpassivo'"/>
				<xsl:with-param name="texto">As duas pontas do swap não podem ser iguais</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="tpoperacao = 'AB' and (valorliquido &lt; 0 or valorliquido &gt; 0)">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'valorliquido'"/>
				<xsl:with-param name="texto">Na abertura do swap nada se paga nem se recebe: o valor líquido deve ser zero</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="tpoperacao != 'AB' and not(vlcurvaativo != '' and vlcurvapassivo != '')">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'vlcurvaativo'"/>
				<xsl:with-param name="texto">Depois da abertura o swap deve ter os valores das duas pontas</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="tpoperacao != 'AB' and ($diferenca &gt; $folga or $diferenca &lt; -$folga)">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'valorliquido'"/>
				<xsl:with-param name="texto">O valor líquido não corresponde ao valor da ponta ativa menos o da passiva e menos o imposto</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="vlnotional &lt;= 0">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'vlnotional'"/>
				<xsl:with-param name="texto">O valor nocional deve ser maior do que zero</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:call-template name="contrato">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
		</xsl:call-template>
		<xsl:call-template name="negocio">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="data" select="$data"/>
		</xsl:call-template>
	</xsl:template>

	<!-- Aplicações e resgates em outros fundos. -->
	<xsl:template match="cotas">
		<xsl:param name="chave"/>
		<xsl:param name="data"/>
		<xsl:variable name="difBruto" select="valorbruto - qtdcotas * valorcota"/>
		<xsl:variable name="tolerancia" select="1 + 0.0001 * valorbruto"/>
		<xsl:variable name="difLiquido" select="valorliquido - (valorbruto - valorir - valoriof)"/>
		<xsl:if test="cnpjfundo = $chave">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'cnpjfundo'"/>
				<xsl:with-param name="texto">O fundo não pode aplicar nas próprias cotas</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="dtsolicitacao &gt; $data">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtsolicitacao'"/>
				<xsl:with-param name="texto">A data do pedido não pode ser posterior à data do movimento</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="dtcotizacao &lt; dtsolicitacao">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtcotizacao'"/>
				<xsl:with-param name="texto">A cotização não pode ser anterior ao pedido</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="dtliquidacao &lt; dtsolicitacao">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtliquidacao'"/>
				<xsl:with-param name="texto">A liquidação não pode ser anterior ao pedido</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="(situacao = 'CO' or situacao = 'LI') and not(dtcotizacao != '' and qtdcotas != '' and valorcota != '')">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'qtdcotas'"/>
				<xsl:with-param name="texto">O movimento já cotizado deve ter data da cotização, quantidade e valor da cota</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="situacao = 'LI' and (not(dtliquidacao != '') or dtliquidacao &gt; $data)">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtliquidacao'"/>
				<xsl:with-param name="texto">O movimento liquidado deve ter a data da liquidação, que não pode ser posterior à data do movimento</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$difBruto &gt; $tolerancia or $difBruto &lt; -$tolerancia">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'valorbruto'"/>
				<xsl:with-param name="texto">O valor bruto não corresponde à quantidade de cotas vezes o valor da cota</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$difLiquido &gt; $folga or $difLiquido &lt; -$folga">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'valorliquido'"/>
				<xsl:with-param name="texto">O valor líquido não corresponde ao valor bruto menos imposto de renda e IOF</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<xsl:template match="caixa">
		<xsl:param name="chave"/>
		<xsl:param name="data"/>
		<xsl:if test="dtlancamento &lt; $data or dtlancamento &gt; $data">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtlancamento'"/>
				<xsl:with-param name="texto">O lançamento deve ser do dia do movimento</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="valor &lt;= 0">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'valor'"/>
				<xsl:with-param name="texto">O valor do lançamento deve ser maior do que zero; quem diz se entra ou sai é o sentido</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<xsl:template match="despesas">
		<xsl:param name="chave"/>
		<xsl:param name="data"/>
		<xsl:if test="dtpagamento &gt; $data">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtpagamento'"/>
				<xsl:with-param name="texto">A despesa não pode ter sido paga depois da data do movimento</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="valor &lt;= 0">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'valor'"/>
				<xsl:with-param name="texto">O valor da despesa deve ser maior do que zero</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<!-- O que vale para todo negócio: já foi feito, liquida depois, tem quantidade. -->
	<xsl:template name="negocio">
		<xsl:param name="chave"/>
		<xsl:param name="registro"/>
		<xsl:param name="data"/>
		<xsl:if test="dtoperacao &gt; $data">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'dtoperacao'"/>
				<xsl:with-param name="texto">A data da operação não pode ser posterior à data do movimento</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="dtliquidacao &lt; dtoperacao">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'dtliquidacao'"/>
				<xsl:with-param name="texto">A liquidação não pode ser anterior à data da operação</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="quantidade &lt;= 0">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'quantidade'"/>
				<xsl:with-param name="texto">A quantidade deve ser maior do que zero; quem diz o lado é a classe da operação</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<!-- O que vale para todo derivativo. -->
	<xsl:template name="contrato">
		<xsl:param name="chave"/>
		<xsl:param name="registro"/>
		<xsl:if test="tpoperacao != 'VC' and dtvencimento &lt; dtoperacao">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'dtvencimento'"/>
				<xsl:with-param name="texto">O contrato venceu antes da data da operação</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="classeoperacao = 'D' or classeoperacao = 'T'">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'classeoperacao'"/>
				<xsl:with-param name="texto">Um derivativo se compra (C) ou se vende (V)</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<xsl:template name="classeDoAluguel">
		<xsl:param name="chave"/>
		<xsl:param name="registro"/>
		<xsl:param name="alugado"/>
		<xsl:if test="$alugado != (classeoperacao = 'D' or classeoperacao = 'T')">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'classeoperacao'"/>
				<xsl:with-param name="texto">As classes D e T são do aluguel, e só dele</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<!--
		Preço e valores de um negócio. A folga do bruto é de um real mais um centésimo por cento do seu módulo: o que os
		arredondamentos do preço explicam. No aluguel (classes D e T) o bruto é só referência, e o líquido não se confere.
		  preco      tag do preço unitário
	-->
	<xsl:template name="valores">
		<xsl:param name="chave"/>
		<xsl:param name="registro"/>
		<xsl:param name="preco"/>
		<xsl:variable name="unitario" select="number(*[name() = $preco])"/>
		<xsl:variable name="difBruto" select="valorbruto - quantidade * $unitario"/>
		<xsl:variable name="tolerancia" select="1 + 0.0001 * valorbruto * (1 - 2 * (valorbruto &lt; 0))"/>
		<xsl:variable name="custos" select="sum(vlcustos | vlcorretagem | vlemolumentos)"/>
		<xsl:variable name="tributos" select="sum(valorir | valoriof)"/>
		<xsl:variable name="difCompra" select="valorliquido - (valorbruto + $custos)"/>
		<xsl:variable name="difVenda" select="valorliquido - (valorbruto - $custos - $tributos)"/>
		<xsl:if test="$unitario &lt; 0">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="$preco"/>
				<xsl:with-param name="texto">O preço não pode ser negativo</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$difBruto &gt; $tolerancia or $difBruto &lt; -$tolerancia">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'valorbruto'"/>
				<xsl:with-param name="texto">O valor bruto não corresponde à quantidade vezes o preço</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="classeoperacao = 'C' and ($difCompra &gt; $folga or $difCompra &lt; -$folga)">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'valorliquido'"/>
				<xsl:with-param name="texto">Na compra o valor líquido deve ser o bruto mais os custos</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="classeoperacao = 'V' and ($difVenda &gt; $folga or $difVenda &lt; -$folga)">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'valorliquido'"/>
				<xsl:with-param name="texto">Na venda o valor líquido deve ser o bruto menos custos e tributos</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<!--
		Escreve um achado sobre um campo do registro atual.
		  chave      CNPJ do fundo ou código da carteira
		  registro   número do registro na seção; vazio no cabeçalho
		  campo      tag do campo
		  valor      texto do campo; sem ele, o do filho com essa tag
		  texto      o que a regra pede
	-->
	<xsl:template name="achado">
		<xsl:param name="chave"/>
		<xsl:param name="registro"/>
		<xsl:param name="campo"/>
		<xsl:param name="valor" select="*[name() = $campo]"/>
		<xsl:param name="texto"/>
		<RESULTADO lastElement="{$campo}" TAGvalor="{$valor}" path="movimento_1_00.{name(..)}.{name()}.{$campo}" keyValor="{$chave}" errCode="-2147221503" strLabel="O valor do campo não corresponde à verificação entre campos" linha="0" coluna="0">
			<strDescription>
				<xsl:value-of select="$texto"/>
				<xsl:if test="$registro">
					<xsl:text> (registro </xsl:text>
					<xsl:value-of select="$registro"/>
					<xsl:text> da seção)</xsl:text>
				</xsl:if>
			</strDescription>
		</RESULTADO>
		<xsl:text>&#10;</xsl:text>
	</xsl:template>
</xsl:stylesheet>
