<?xml version="1.0" encoding="UTF-8"?>
<!--
	Regras entre campos do arquivo de posição 3.00.

	O validador não soma os ativos desta versão nem confere o patrimônio: as somas estão aqui, com as demais regras.
	Cada bloco é somado uma vez e percorrido outra, e dentro de um registro só se olham os filhos dele, para que o
	tempo cresça na proporção do tamanho do arquivo.

	Um campo vazio ou que não é número vira NaN, e nenhuma comparação com NaN é verdadeira: quem fala dele é o
	esquema, não a regra. Datas AAAAMMDD comparam-se como números; 00000000 é a data que falta.

	A saída é uma lista de RESULTADO dentro de TORVA, uma para cada regra que um registro não cumpre.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
	<xsl:output method="xml" encoding="UTF-8" omit-xml-declaration="yes" indent="no"/>

	<xsl:key name="bloco" match="/*/fundo | /*/carteira" use="concat(name(), ' ', header/*[1])"/>

	<!-- A data da posição do arquivo é a do primeiro cabeçalho. -->
	<xsl:variable name="dataDoArquivo" select="string(/*/*[1]/header/dtposicao)"/>

	<!-- Quanto a soma dos ativos e o patrimônio podem diferir do que o cabeçalho diz, em reais. -->
	<xsl:variable name="folgaPatrimonio" select="500"/>

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

		<!--
			Soma dos ativos de um bloco, descontados os tributos. As classes C e D somam, V subtrai e T fica de fora; V
			com compromisso também fica. Termos, futuros, swaps, cotas, caixa e imóveis entram pelo sinal que o valor tem.
		-->
		<xsl:variable name="comClasse" select="*[self::titpublico or self::titprivado or self::debenture or self::acoes or self::opcoesacoes or self::opcoesderiv or self::opcoesflx]"/>
		<xsl:variable name="somam" select="$comClasse[classeoperacao = 'C' or classeoperacao = 'D']"/>
		<xsl:variable name="subtraem" select="$comClasse[classeoperacao = 'V' and not(compromisso)]"/>
		<xsl:variable name="semClasse" select="*[self::termorv or self::termorf or self::futuros or self::swap or self::cotas]"/>
		<xsl:variable name="soma" select="sum($somam/valorfindisp) + sum($somam/valorfinemgar) + sum($somam/valorfinanceiro) - sum($somam/tributos)
			- sum($subtraem/valorfindisp) - sum($subtraem/valorfinemgar) - sum($subtraem/valorfinanceiro) + sum($subtraem/tributos)
			+ sum(termorv/valorfinanceiro) + sum(termorf/valorfin) + sum(futuros/vlajuste) + sum(cotas/valorfinanceiro)
			+ sum(swap/vlmercadoativo) - sum(swap/vlmercadopassivo) - sum($semClasse/tributos)
			+ sum(caixa/saldo) + sum(imoveis/valorcontabil)"/>

		<xsl:apply-templates select="header">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="soma" select="$soma"/>
		</xsl:apply-templates>
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

		<xsl:apply-templates select="titpublico"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="titprivado"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="debenture"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="acoes"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="opcoesacoes"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="opcoesderiv"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="opcoesflx"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="termorv"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="termorf"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="futuros"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="swap"><xsl:with-param name="chave" select="$chave"/><xsl:with-param name="data" select="$data"/></xsl:apply-templates>
		<xsl:apply-templates select="cotas"><xsl:with-param name="chave" select="$chave"/></xsl:apply-templates>
		<xsl:apply-templates select="imoveis"><xsl:with-param name="chave" select="$chave"/></xsl:apply-templates>
	</xsl:template>

	<!-- Cabeçalho. O de uma carteira não tem cotas, e as diferenças que precisam delas são NaN. -->
	<xsl:template match="header">
		<xsl:param name="chave"/>
		<xsl:param name="soma"/>
		<xsl:variable name="difAtivos" select="valorativos - $soma"/>
		<xsl:variable name="difContas" select="patliq - (valorativos + valorreceber - valorpagar)"/>
		<xsl:variable name="difFormula" select="$difContas + vlcotasemitir + vlcotasresgatar"/>
		<xsl:variable name="difCota" select="patliq - valorcota * quantidade"/>
		<xsl:if test="dtposicao != $dataDoArquivo">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="campo" select="'dtposicao'"/>
				<xsl:with-param name="texto">A data da posição deve ser a mesma em todos os cabeçalhos do arquivo</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="valorcota &lt;= 0">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="campo" select="'valorcota'"/>
				<xsl:with-param name="texto">O valor da cota deve ser maior do que zero</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$difAtivos &gt; $folgaPatrimonio or $difAtivos &lt; -$folgaPatrimonio">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="campo" select="'valorativos'"/>
				<xsl:with-param name="texto">O valor dos ativos do cabeçalho não corresponde à soma dos ativos das seções</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$difFormula &gt; $folgaPatrimonio or $difFormula &lt; -$folgaPatrimonio">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="campo" select="'patliq'"/>
				<xsl:with-param name="texto">O valor do patrimônio líquido não corresponde à fórmula: patLiq = valorativos + valorreceber - valorpagar - vlcotasemitir - vlcotasresgatar</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$difCota &gt; $folgaPatrimonio or $difCota &lt; -$folgaPatrimonio">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="campo" select="'patliq'"/>
				<xsl:with-param name="texto">O valor do patrimônio líquido não corresponde à fórmula: patLiq = valorcota * quantidade</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="parent::carteira and ($difContas &gt; $folgaPatrimonio or $difContas &lt; -$folgaPatrimonio)">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="campo" select="'patliq'"/>
				<xsl:with-param name="texto">O valor do patrimônio líquido não corresponde à fórmula: patLiq = valorativos + valorreceber - valorpagar</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<!-- Títulos de renda fixa. -->
	<xsl:template match="titpublico | titprivado | debenture">
		<xsl:param name="chave"/>
		<xsl:param name="data"/>
		<xsl:variable name="emissao" select="number(dtemissao)"/>
		<xsl:variable name="operacao" select="number(dtoperacao)"/>
		<xsl:variable name="vencimento" select="number(dtvencimento)"/>

		<xsl:if test="$vencimento != 0 and $vencimento &lt;= $emissao">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtvencimento'"/>
				<xsl:with-param name="texto">A data de vencimento deve ser posterior à data de emissão</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$vencimento != 0 and $vencimento &lt; $data">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtvencimento'"/>
				<xsl:with-param name="texto">O título venceu antes da data da posição</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$operacao &lt; $emissao">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtoperacao'"/>
				<xsl:with-param name="texto">A data da operação não pode ser anterior à data de emissão</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:call-template name="operacaoAteAPosicao">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="data" select="$data"/>
		</xsl:call-template>
		<xsl:call-template name="valoresDaPosicao">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
		</xsl:call-template>
		<xsl:call-template name="aluguel">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="data" select="$data"/>
		</xsl:call-template>
		<xsl:apply-templates select="compromisso">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="data" select="$data"/>
		</xsl:apply-templates>
	</xsl:template>

	<!-- Compromisso de um título: o que a operação compromissada não pode deixar de dizer. -->
	<xsl:template match="compromisso">
		<xsl:param name="chave"/>
		<xsl:param name="registro"/>
		<xsl:param name="data"/>
		<xsl:variable name="compromisso" select="."/>
		<xsl:for-each select="..">
			<xsl:if test="$compromisso/classecomp != classeoperacao">
				<xsl:call-template name="achado">
					<xsl:with-param name="chave" select="$chave"/>
					<xsl:with-param name="registro" select="$registro"/>
					<xsl:with-param name="campo" select="'classeoperacao'"/>
					<xsl:with-param name="texto">A classe da operação deve ser igual a classe da compromissada</xsl:with-param>
				</xsl:call-template>
			</xsl:if>
			<xsl:if test="$compromisso/dtretorno = '' or $compromisso/dtretorno &lt; dtoperacao or $compromisso/dtretorno &lt; $data">
				<xsl:call-template name="achado">
					<xsl:with-param name="chave" select="$chave"/>
					<xsl:with-param name="registro" select="$registro"/>
					<xsl:with-param name="campo" select="'dtretorno'"/>
					<xsl:with-param name="valor" select="$compromisso/dtretorno"/>
					<xsl:with-param name="texto">A posição compromissada deve ter uma data de retorno, que não pode ser anterior à operação nem à data da posição</xsl:with-param>
				</xsl:call-template>
			</xsl:if>
			<xsl:if test="$compromisso/puretorno = '' and $compromisso/txoperacao = ''">
				<xsl:call-template name="achado">
					<xsl:with-param name="chave" select="$chave"/>
					<xsl:with-param name="registro" select="$registro"/>
					<xsl:with-param name="campo" select="'puretorno'"/>
					<xsl:with-param name="valor" select="''"/>
					<xsl:with-param name="texto">A posição compromissada deve ter o PU de retorno ou a taxa da operação</xsl:with-param>
				</xsl:call-template>
			</xsl:if>
			<xsl:if test="$compromisso/puretorno &lt;= 0">
				<xsl:call-template name="achado">
					<xsl:with-param name="chave" select="$chave"/>
					<xsl:with-param name="registro" select="$registro"/>
					<xsl:with-param name="campo" select="'puretorno'"/>
					<xsl:with-param name="valor" select="$compromisso/puretorno"/>
					<xsl:with-param name="texto">O PU de retorno deve ser maior do que zero</xsl:with-param>
				</xsl:call-template>
			</xsl:if>
		</xsl:for-each>
	</xsl:template>

	<xsl:template match="acoes">
		<xsl:param name="chave"/>
		<xsl:param name="data"/>
		<xsl:call-template name="valoresDaPosicao">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
		</xsl:call-template>
		<xsl:call-template name="aluguel">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="data" select="$data"/>
		</xsl:call-template>
	</xsl:template>

	<!-- Aluguel de um título ou de uma ação: o tipo, a classe da operação e os dados do contrato dizem o mesmo. -->
	<xsl:template name="aluguel">
		<xsl:param name="chave"/>
		<xsl:param name="registro"/>
		<xsl:param name="data"/>
		<xsl:variable name="alugada" select="tipoaluguel != '' and tipoaluguel != 'N'"/>
		<xsl:if test="$alugada != (classeoperacao = 'D' or classeoperacao = 'T')">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'tipoaluguel'"/>
				<xsl:with-param name="texto">As classes D e T são das posições alugadas, e só delas</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$alugada and (not(dtvencalug != '') or dtvencalug &lt; $data)">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'dtvencalug'"/>
				<xsl:with-param name="texto">A posição alugada deve ter um vencimento do aluguel, que não pode ser anterior à data da posição</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$alugada and not(txalug != '')">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'txalug'"/>
				<xsl:with-param name="texto">A posição alugada deve ter a taxa do aluguel</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="not($alugada) and dtvencalug != ''">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'dtvencalug'"/>
				<xsl:with-param name="texto">Só a posição alugada tem vencimento de aluguel</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="not($alugada) and txalug != ''">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'txalug'"/>
				<xsl:with-param name="texto">Só a posição alugada tem taxa de aluguel</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<xsl:template match="opcoesacoes | opcoesderiv | opcoesflx">
		<xsl:param name="chave"/>
		<xsl:param name="data"/>
		<xsl:call-template name="valorDoContrato">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
		</xsl:call-template>
		<xsl:call-template name="contrato">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="data" select="$data"/>
		</xsl:call-template>
	</xsl:template>

	<xsl:template match="termorv | termorf | futuros | swap">
		<xsl:param name="chave"/>
		<xsl:param name="data"/>
		<xsl:if test="dtvencimento &lt; dtliquidacao">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'dtliquidacao'"/>
				<xsl:with-param name="texto">A liquidação do termo não pode ser posterior ao vencimento do título</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:call-template name="contrato">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
			<xsl:with-param name="data" select="$data"/>
		</xsl:call-template>
	</xsl:template>

	<xsl:template match="cotas">
		<xsl:param name="chave"/>
		<xsl:variable name="diferenca" select="valorfinanceiro - (qtdisponivel + qtgarantia) * puposicao"/>
		<xsl:variable name="folga" select="1 + 0.0001 * valorfinanceiro * (1 - 2 * (valorfinanceiro &lt; 0))"/>
		<xsl:if test="cnpjfundo = $chave">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'cnpjfundo'"/>
				<xsl:with-param name="texto">O fundo não pode aplicar nas próprias cotas</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$diferenca &gt; $folga or $diferenca &lt; -$folga">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'valorfinanceiro'"/>
				<xsl:with-param name="texto">O valor financeiro não corresponde à quantidade de cotas vezes o valor da cota</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:call-template name="precoNegativo">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="position()"/>
		</xsl:call-template>
	</xsl:template>

	<xsl:template match="imoveis">
		<xsl:param name="chave"/>
		<xsl:if test="percpart &lt;= 0 or percpart &gt; 100">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="position()"/>
				<xsl:with-param name="campo" select="'percpart'"/>
				<xsl:with-param name="texto">A participação no imóvel deve ser maior do que zero e não pode passar de 100%</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<!-- O que vale para todo derivativo: ainda não venceu, já foi contratado, diz que risco cobre. -->
	<xsl:template name="contrato">
		<xsl:param name="chave"/>
		<xsl:param name="registro"/>
		<xsl:param name="data"/>
		<xsl:if test="dtvencimento &lt; $data">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'dtvencimento'"/>
				<xsl:with-param name="texto">O contrato venceu antes da data da posição</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="(hedge = 'S') != (tphedge != '')">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'tphedge'"/>
				<xsl:with-param name="texto">O tipo de proteção é preenchido quando a operação é de proteção, e só então</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:call-template name="operacaoAteAPosicao">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="$registro"/>
			<xsl:with-param name="data" select="$data"/>
		</xsl:call-template>
		<xsl:call-template name="precoNegativo">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="$registro"/>
		</xsl:call-template>
	</xsl:template>

	<xsl:template name="operacaoAteAPosicao">
		<xsl:param name="chave"/>
		<xsl:param name="registro"/>
		<xsl:param name="data"/>
		<xsl:if test="dtoperacao &gt; $data">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'dtoperacao'"/>
				<xsl:with-param name="texto">A data da operação não pode ser posterior à data da posição</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<xsl:template name="precoNegativo">
		<xsl:param name="chave"/>
		<xsl:param name="registro"/>
		<xsl:if test="puposicao &lt; 0">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'puposicao'"/>
				<xsl:with-param name="texto">O preço unitário não pode ser negativo</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<!--
		Títulos e ações: preço, os dois valores e a garantia.

		A folga de um valor é de um real mais um centésimo por cento do seu módulo: o que os arredondamentos do preço
		explicam. O fator (1 - 2 * (valor &lt; 0)) tira o sinal.
	-->
	<xsl:template name="valoresDaPosicao">
		<xsl:param name="chave"/>
		<xsl:param name="registro"/>
		<xsl:variable name="preco" select="number(puposicao)"/>
		<xsl:variable name="difDisponivel" select="valorfindisp - qtdisponivel * $preco"/>
		<xsl:variable name="difGarantia" select="valorfinemgar - qtgarantia * $preco"/>
		<xsl:variable name="folgaDisponivel" select="1 + 0.0001 * valorfindisp * (1 - 2 * (valorfindisp &lt; 0))"/>
		<xsl:variable name="folgaGarantia" select="1 + 0.0001 * valorfinemgar * (1 - 2 * (valorfinemgar &lt; 0))"/>
		<xsl:call-template name="precoNegativo">
			<xsl:with-param name="chave" select="$chave"/>
			<xsl:with-param name="registro" select="$registro"/>
		</xsl:call-template>
		<xsl:if test="$difDisponivel &gt; $folgaDisponivel or $difDisponivel &lt; -$folgaDisponivel">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'valorfindisp'"/>
				<xsl:with-param name="texto">O valor disponível não corresponde à quantidade disponível vezes o preço da posição</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="$difGarantia &gt; $folgaGarantia or $difGarantia &lt; -$folgaGarantia">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'valorfinemgar'"/>
				<xsl:with-param name="texto">O valor em garantia não corresponde à quantidade em garantia vezes o preço da posição</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
		<xsl:if test="qtgarantia &gt; 0 and not(cnpjgarantia != '')">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'cnpjgarantia'"/>
				<xsl:with-param name="texto">Falta o CNPJ de quem detém a quantidade em garantia</xsl:with-param>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<!-- Opções: o valor é a quantidade vezes o prêmio da posição. -->
	<xsl:template name="valorDoContrato">
		<xsl:param name="chave"/>
		<xsl:param name="registro"/>
		<xsl:variable name="diferenca" select="valorfinanceiro - quantidade * puposicao"/>
		<xsl:variable name="folga" select="1 + 0.0001 * valorfinanceiro * (1 - 2 * (valorfinanceiro &lt; 0))"/>
		<xsl:if test="$diferenca &gt; $folga or $diferenca &lt; -$folga">
			<xsl:call-template name="achado">
				<xsl:with-param name="chave" select="$chave"/>
				<xsl:with-param name="registro" select="$registro"/>
				<xsl:with-param name="campo" select="'valorfinanceiro'"/>
				<xsl:with-param name="texto">O valor financeiro não corresponde à quantidade vezes o preço da posição</xsl:with-param>
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
		<RESULTADO lastElement="{$campo}" TAGvalor="{$valor}" path="arquivoposicao_3_00.{name(..)}.{name()}.{$campo}" keyValor="{$chave}" errCode="-2147221503" strLabel="O valor do campo não corresponde à verificação entre campos" linha="0" coluna="0">
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
