<?xml version="1.0" encoding="UTF-8"?>
<!--
	Regras entre campos da posição analítica do passivo.

	As cotas dos cotistas somam as do fundo e as de cada distribuidor, e os valores de cada linha fecham entre si. Cada
	bloco é percorrido uma só vez; o que se procura em outra seção está numa chave.

	Um campo vazio ou que não é número vira NaN, e nenhuma comparação com NaN é verdadeira: quem fala dele é o
	esquema, não a regra. Datas AAAAMMDD comparam-se como números.

	A saída é uma lista de RESULTADO dentro de TORVA, uma para cada regra que um registro não cumpre.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
	<xsl:output method="xml" encoding="UTF-8" omit-xml-declaration="yes" indent="no"/>

	<xsl:key name="bloco" match="/*/fundo" use="header/cnpj"/>
	<xsl:key name="distribuidor" match="distribuidor" use="concat(generate-id(..), ' ', cnpjdistribuidor)"/>
	<xsl:key name="cotistasDoDistribuidor" match="cotista" use="concat(generate-id(..), ' ', cnpjdistribuidor)"/>

	<!-- A data da posição do arquivo é a do primeiro cabeçalho. -->
	<xsl:variable name="dataDoArquivo" select="string(/*/fundo[1]/header/dtposicao)"/>

	<!-- Quanto uma soma de cotas pode diferir, em cotas, e um valor da sua fórmula, em reais. -->
	<xsl:variable name="folgaCotas" select="1"/>
	<xsl:variable name="folgaPatrimonio" select="500"/>
	<xsl:variable name="folgaLiquido" select="0.05"/>

	<xsl:template match="/">
		<TORVA>
			<xsl:text>&#10;</xsl:text>
			<xsl:apply-templates select="*/fundo"/>
		</TORVA>
	</xsl:template>

	<!-- Um fundo. position() de cada registro é o seu número dentro da seção. -->
	<xsl:template match="fundo">
		<xsl:variable name="chave" select="string(header/cnpj)"/>
		<xsl:variable name="data" select="number(header/dtposicao)"/>
		<xsl:apply-templates select="header">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="soma" select="sum(cotista/qtdcotas)"/>
		</xsl:apply-templates>
		<xsl:apply-templates select="cotista">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="data" select="$data"/>
			<xsl:with-param name="cota" select="number(header/valorcota)"/>
			<xsl:with-param name="listaDistribuidores" select="boolean(distribuidor)"/>
		</xsl:apply-templates>
		<xsl:apply-templates select="movimentacao">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="data" select="$data"/>
		</xsl:apply-templates>
		<xsl:apply-templates select="distribuidor">
			<xsl:with-param name="chave" select="$chave"/>
		</xsl:apply-templates>
	</xsl:template>

	<xsl:template match="header">
		<xsl:param name="chave"/>
		<xsl:param name="soma"/>
		<xsl:variable name="difPatrimonio" select="patliq - valorcota * quantidade"/>
		<xsl:variable name="difCotas" select="quantidade - $soma"/>
		<xsl:if test="dtposicao != $dataDoArquivo">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="campo" select="'dtposicao'"/>
				<xsl:with-param name="texto">A data da posição deve ser a mesma em todos os cabeçalhos do arquivo</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<!-- O bloco anterior vem antes da busca, que copia todos os iguais. -->
		<xsl:if test="../preceding-sibling::fundo[1]/header/cnpj = $chave or count(.. | key('bloco', $chave)[1]) = 2">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="campo" select="'cnpj'"/>
				<xsl:with-param name="texto">O mesmo fundo já apareceu antes neste arquivo</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="valorcota &lt;= 0">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="campo" select="'valorcota'"/>
				<xsl:with-param name="texto">O valor da cota deve ser maior do que zero</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$difPatrimonio &gt; $folgaPatrimonio or $difPatrimonio &lt; -$folgaPatrimonio">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="campo" select="'patliq'"/>
				<xsl:with-param name="texto">O patrimônio líquido não corresponde ao valor da cota vezes a quantidade de cotas</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$difCotas &gt; $folgaCotas or $difCotas &lt; -$folgaCotas">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="campo" select="'quantidade'"/>
				<xsl:with-param name="texto">A quantidade de cotas do fundo não corresponde à soma das cotas dos cotistas</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<xsl:template match="cotista">
		<xsl:param name="chave"/>
		<xsl:param name="data"/>
		<xsl:param name="cota"/>
		<xsl:param name="listaDistribuidores"/>
		<xsl:variable name="difBruto" select="valorbruto - qtdcotas * $cota"/>
		<xsl:variable name="folgaBruto" select="1 + 0.0001 * qtdcotas * $cota"/>
		<xsl:variable name="difLiquido" select="valorliquido - (valorbruto - valorir - valoriof)"/>
		<xsl:if test="dtaplicacao &gt; $data">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtaplicacao'"/>
				<xsl:with-param name="texto">A data da aplicação não pode ser posterior à data da posição</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="dtcarencia &lt; dtaplicacao">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtcarencia'"/>
				<xsl:with-param name="texto">O fim da carência não pode ser anterior à data da aplicação</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="qtdbloqueada &gt; qtdcotas">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'qtdbloqueada'"/>
				<xsl:with-param name="texto">A quantidade bloqueada não pode passar da quantidade de cotas</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$difBruto &gt; $folgaBruto or $difBruto &lt; -$folgaBruto">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'valorbruto'"/>
				<xsl:with-param name="texto">O valor bruto não corresponde à quantidade de cotas vezes o valor da cota do fundo</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$difLiquido &gt; $folgaLiquido or $difLiquido &lt; -$folgaLiquido">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'valorliquido'"/>
				<xsl:with-param name="texto">O valor líquido não corresponde ao valor bruto menos imposto de renda e IOF</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$listaDistribuidores and not(key('distribuidor', concat(generate-id(..), ' ', cnpjdistribuidor)))">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'cnpjdistribuidor'"/>
				<xsl:with-param name="texto">O distribuidor do cotista não está entre os distribuidores do fundo</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<xsl:template match="movimentacao">
		<xsl:param name="chave"/>
		<xsl:param name="data"/>
		<xsl:if test="dtsolicitacao &gt; $data">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtsolicitacao'"/>
				<xsl:with-param name="texto">A data do pedido não pode ser posterior à data da posição</xsl:with-param>
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
	</xsl:template>

	<xsl:template match="distribuidor">
		<xsl:param name="chave"/>
		<xsl:variable name="diferenca" select="qtdcotas - sum(key('cotistasDoDistribuidor', concat(generate-id(..), ' ', cnpjdistribuidor))/qtdcotas)"/>
		<xsl:if test="$diferenca &gt; $folgaCotas or $diferenca &lt; -$folgaCotas">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'qtdcotas'"/>
				<xsl:with-param name="texto">A quantidade de cotas do distribuidor não corresponde à soma das cotas dos seus cotistas</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<!--
		Escreve um achado sobre um campo do registro atual.
		  chave      CNPJ do fundo
		  registro   número do registro na seção; vazio no cabeçalho
		  campo      tag do campo
		  texto      o que a regra pede
	-->
	<xsl:template name="achado">
		<xsl:param name="chave"/>
		<xsl:param name="registro"/>
		<xsl:param name="campo"/>
		<xsl:param name="texto"/>
		<RESULTADO lastElement="{$campo}" TAGvalor="{*[name() = $campo]}" path="posicao_passivo_analitico_v100.fundo.{name()}.{$campo}" keyValor="{$chave}" errCode="-2147221503" strLabel="O valor do campo não corresponde à verificação entre campos" linha="0" coluna="0">
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
