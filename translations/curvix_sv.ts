<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="sv">
<context>
    <name>Area</name>
    <message>
        <source>The integral diverges on %1.</source>
        <translation>Integralen divergerar på %1.</translation>
    </message>
    <message>
        <source>The function is not defined on the whole interval %1.</source>
        <translation>Funktionen är inte definierad på hela intervallet %1.</translation>
    </message>
    <message>
        <source>∫ diverges</source>
        <translation>∫ divergerar</translation>
    </message>
    <message>
        <source>∫ not defined</source>
        <translation>∫ inte definierad</translation>
    </message>
    <message>
        <source>   area = %1</source>
        <translation>   area = %1</translation>
    </message>
    <message>
        <source>∫ from %1 to %2 = %3   area = %4</source>
        <translation>∫ från %1 till %2 = %3   area = %4</translation>
    </message>
</context>
<context>
    <name>AreaDialog</name>
    <message>
        <source>Area under f(%1) = %2</source>
        <translation>Area under f(%1) = %2</translation>
    </message>
    <message>
        <source>The area between the curve and the x axis:</source>
        <translation>Arean mellan kurvan och x-axeln:</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Från</translation>
    </message>
    <message>
        <source>To</source>
        <translation>Till</translation>
    </message>
    <message>
        <source>A number or a calculation; p or π stands for pi, as in p/2</source>
        <translation>Ett tal eller en beräkning; p eller π står för pi, som i p/2</translation>
    </message>
    <message>
        <source>&amp;From %1 =</source>
        <translation>&amp;Från %1 =</translation>
    </message>
    <message>
        <source>&amp;To %1 =</source>
        <translation>&amp;Till %1 =</translation>
    </message>
    <message>
        <source>The %1 box needs a number, such as 0, %2, 2π or π/2.</source>
        <translation>Rutan %1 behöver ett tal, till exempel 0, %2, 2π eller π/2.</translation>
    </message>
</context>
<context>
    <name>DrawingText</name>
    <message>
        <source>it is empty</source>
        <translation>den är tom</translation>
    </message>
    <message>
        <source>it is listed twice</source>
        <translation>den finns två gånger i listan</translation>
    </message>
    <message>
        <source>function %1 &apos;%2&apos; cannot be drawn: %3</source>
        <translation>funktion %1 &apos;%2&apos; kan inte ritas: %3</translation>
    </message>
    <message>
        <source>the functions are not all in the variable &apos;%1&apos;</source>
        <translation>alla funktioner använder inte variabeln &apos;%1&apos;</translation>
    </message>
    <message>
        <source>Could not save the drawing %1: %2</source>
        <translation>Det gick inte att spara ritningen %1: %2</translation>
    </message>
    <message>
        <source>Could not open the drawing %1: %2</source>
        <translation>Det gick inte att öppna ritningen %1: %2</translation>
    </message>
    <message>
        <source>field &apos;%1&apos; %2</source>
        <translation>fältet &apos;%1&apos; %2</translation>
    </message>
    <message>
        <source>is not a number</source>
        <translation>är inget tal</translation>
    </message>
    <message>
        <source>is out of range (at most %1 either way)</source>
        <translation>ligger utanför gränserna (högst %1 åt vardera hållet)</translation>
    </message>
    <message>
        <source>is not a whole number from %1 to %2</source>
        <translation>är inget heltal från %1 till %2</translation>
    </message>
    <message>
        <source>is not true or false</source>
        <translation>är varken sant eller falskt</translation>
    </message>
    <message>
        <source>is not a text</source>
        <translation>är ingen text</translation>
    </message>
    <message>
        <source>is too long (at most %1 characters)</source>
        <translation>är för långt (högst %1 tecken)</translation>
    </message>
    <message>
        <source>is not an object</source>
        <translation>är inget objekt</translation>
    </message>
    <message>
        <source>is not a list</source>
        <translation>är ingen lista</translation>
    </message>
    <message>
        <source>has too many entries (%1; at most %2)</source>
        <translation>har för många poster (%1; högst %2)</translation>
    </message>
    <message>
        <source>is missing</source>
        <translation>saknas</translation>
    </message>
    <message>
        <source>is not a usable range: each minimum must lie below its maximum</source>
        <translation>är inget användbart intervall: varje minsta värde måste ligga under sitt största</translation>
    </message>
    <message>
        <source>is not a usable range: a step is negative or 0</source>
        <translation>är inget användbart intervall: ett steg är negativt eller 0</translation>
    </message>
    <message>
        <source>is not radians, degrees or gradians</source>
        <translation>är varken radianer, grader eller gon</translation>
    </message>
    <message>
        <source>not a Curvix drawing</source>
        <translation>ingen Curvix-ritning</translation>
    </message>
    <message>
        <source>made by a newer Curvix (format version %1); this one reads version %2</source>
        <translation>gjord av en nyare Curvix (formatversion %1); den här läser version %2</translation>
    </message>
    <message>
        <source>is not a single letter</source>
        <translation>är inte en enda bokstav</translation>
    </message>
    <message>
        <source>the file is too large for a drawing (at most %1 bytes)</source>
        <translation>filen är för stor för en ritning (högst %1 byte)</translation>
    </message>
    <message>
        <source>the file is damaged: %1 at byte %2</source>
        <translation>filen är skadad: %1 vid byte %2</translation>
    </message>
    <message>
        <source>function %1 &apos;%2&apos; uses %3, which the drawing does not declare as parameters</source>
        <translation>funktion %1 &apos;%2&apos; använder %3, som ritningen inte anger som parametrar</translation>
    </message>
    <message>
        <source>an area lies under curve %1, which is not in the drawing</source>
        <translation>en area ligger under kurva %1, som inte finns i ritningen</translation>
    </message>
    <message>
        <source>is not a small letter other than e and the variable</source>
        <translation>är inte en liten bokstav annan än e och variabeln</translation>
    </message>
    <message>
        <source>names a parameter declared before</source>
        <translation>namnger en parameter som redan finns</translation>
    </message>
    <message>
        <source>is not below max</source>
        <translation>är inte mindre än max</translation>
    </message>
    <message>
        <source>is not greater than 0</source>
        <translation>är inte större än 0</translation>
    </message>
    <message>
        <source>names a curve, but the drawing has none</source>
        <translation>namnger en kurva, men ritningen har ingen</translation>
    </message>
</context>
<context>
    <name>Formula</name>
    <message>
        <source>Unexpected end of formula</source>
        <translation>Formeln tar slut för tidigt</translation>
    </message>
    <message>
        <source>Unexpected character &apos;%1&apos;</source>
        <translation>Oväntat tecken &apos;%1&apos;</translation>
    </message>
    <message>
        <source>Unknown name &apos;%1&apos;</source>
        <translation>Okänt namn &apos;%1&apos;</translation>
    </message>
    <message>
        <source>Missing &apos;)&apos; for &apos;(&apos;</source>
        <translation>&apos;)&apos; saknas till &apos;(&apos;</translation>
    </message>
    <message>
        <source>Missing &apos;(&apos; for &apos;)&apos;</source>
        <translation>&apos;(&apos; saknas till &apos;)&apos;</translation>
    </message>
    <message>
        <source>Invalid number &apos;%1&apos;</source>
        <translation>Ogiltigt tal &apos;%1&apos;</translation>
    </message>
    <message>
        <source>A number cannot follow the name &apos;%1&apos;</source>
        <translation>Ett tal kan inte stå direkt efter namnet &apos;%1&apos;</translation>
    </message>
    <message>
        <source>Missing &apos;(&apos; after the function &apos;%1&apos;</source>
        <translation>&apos;(&apos; saknas efter funktionen &apos;%1&apos;</translation>
    </message>
    <message>
        <source>The formula is empty</source>
        <translation>Formeln är tom</translation>
    </message>
    <message>
        <source>%1 at position %2</source>
        <translation>%1 vid position %2</translation>
    </message>
    <message>
        <source>Unexpected number &apos;%1&apos;</source>
        <translation>Oväntat tal &apos;%1&apos;</translation>
    </message>
    <message>
        <source>Unexpected &apos;%1&apos;</source>
        <translation>Oväntat &apos;%1&apos;</translation>
    </message>
    <message>
        <source>The formula is too complex</source>
        <translation>Formeln är för komplicerad</translation>
    </message>
</context>
<context>
    <name>ParameterText</name>
    <message>
        <source>%1 is a parameter of the drawing; it cannot be the variable too.</source>
        <translation>%1 är en parameter i ritningen; den kan inte också vara variabeln.</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 och %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be a parameter: a parameter is one small letter from a to z, neither e nor the variable %2</source>
        <translation>&apos;%1&apos; kan inte vara en parameter: en parameter är en liten bokstav från a till z, varken e eller variabeln %2</translation>
    </message>
    <message>
        <source>There is a parameter %1 already.</source>
        <translation>Det finns redan en parameter %1.</translation>
    </message>
    <message>
        <source>The value, the bounds and the step of %1 must be numbers.</source>
        <translation>Värdet, gränserna och steget för %1 måste vara tal.</translation>
    </message>
    <message>
        <source>The minimum of %1 must be less than its maximum.</source>
        <translation>Minimum för %1 måste vara mindre än dess maximum.</translation>
    </message>
    <message>
        <source>The step of %1 must be greater than 0.</source>
        <translation>Steget för %1 måste vara större än 0.</translation>
    </message>
    <message>
        <source>%1 cannot be renamed: %2 uses it</source>
        <translation>%1 kan inte byta namn: %2 använder den</translation>
    </message>
    <message>
        <source>%1 cannot be renamed: %2 use it</source>
        <translation>%1 kan inte byta namn: %2 använder den</translation>
    </message>
    <message>
        <source>%1 cannot be deleted: %2 uses it</source>
        <translation>%1 kan inte tas bort: %2 använder den</translation>
    </message>
    <message>
        <source>%1 cannot be deleted: %2 use it</source>
        <translation>%1 kan inte tas bort: %2 använder den</translation>
    </message>
    <message>
        <source>the value %1, from %2 to %3 in steps of %4</source>
        <translation>värdet %1, från %2 till %3 i steg om %4</translation>
    </message>
    <message>
        <source>The formula uses %1, which is not a parameter yet. Make %1 a parameter with %2?</source>
        <translation>Formeln använder %1, som ännu inte är en parameter. Gör %1 till en parameter med %2?</translation>
    </message>
    <message>
        <source>The formula uses %1, which are not parameters yet. Make them parameters with %2?</source>
        <translation>Formeln använder %1, som ännu inte är parametrar. Gör dem till parametrar med %2?</translation>
    </message>
</context>
<context>
    <name>PointMarks</name>
    <message>
        <source>zero</source>
        <translation>nollställe</translation>
    </message>
    <message>
        <source>min</source>
        <translation>min</translation>
    </message>
    <message>
        <source>max</source>
        <translation>max</translation>
    </message>
    <message>
        <source>inflection</source>
        <translation>inflexionspunkt</translation>
    </message>
    <message>
        <source>intersection</source>
        <translation>skärningspunkt</translation>
    </message>
</context>
<context>
    <name>QGnomeTheme</name>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Spara</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Avbryt</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Stäng</translation>
    </message>
    <message>
        <source>Close without Saving</source>
        <translation>Stäng utan att spara</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>P&amp;oints of interest</source>
        <translation>&amp;Intressanta punkter</translation>
    </message>
    <message>
        <source>Ta&amp;ble of values...</source>
        <translation>Vä&amp;rdetabell...</translation>
    </message>
    <message>
        <source>&amp;Derivata</source>
        <translation>&amp;Derivata</translation>
    </message>
    <message>
        <source>&amp;Primitiv funktion</source>
        <translation>&amp;Primitiv funktion</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Spara</translation>
    </message>
    <message>
        <source>Save All</source>
        <translation>Spara alla</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öppna</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Ja</translation>
    </message>
    <message>
        <source>Yes to &amp;All</source>
        <translation>Ja till &amp;alla</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Nej</translation>
    </message>
    <message>
        <source>N&amp;o to All</source>
        <translation>N&amp;ej till alla</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>Avbryt</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>Försök igen</translation>
    </message>
    <message>
        <source>Ignore</source>
        <translation>Ignorera</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Stäng</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Avbryt</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Förkasta</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hjälp</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Verkställ</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Återställ</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>Återställ standardvärden</translation>
    </message>
</context>
<context>
    <name>StringTable</name>
    <message>
        <source>Curvix</source>
        <comment>1</comment>
        <translation>Curvix</translation>
    </message>
    <message>
        <source>curvix-help.html</source>
        <comment>3</comment>
        <translation>curvix-help.html</translation>
    </message>
    <message>
        <source>My Graphs</source>
        <comment>9</comment>
        <translation>My Graphs</translation>
    </message>
    <message>
        <source>(*.bmp)|*.bmp</source>
        <comment>23</comment>
        <translation>(*.bmp)|*.bmp</translation>
    </message>
    <message>
        <source>.</source>
        <comment>25</comment>
        <translation>.</translation>
    </message>
    <message>
        <source>,</source>
        <comment>29</comment>
        <translation>,</translation>
    </message>
    <message>
        <source>-1</source>
        <comment>32</comment>
        <translation>-1</translation>
    </message>
    <message>
        <source>-1</source>
        <comment>33</comment>
        <translation>-1</translation>
    </message>
    <message>
        <source>-1</source>
        <comment>34</comment>
        <translation>-1</translation>
    </message>
    <message>
        <source>-1</source>
        <comment>35</comment>
        <translation>-1</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <comment>426</comment>
        <translation>&amp;Ny</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <comment>427</comment>
        <translation>&amp;Kopiera</translation>
    </message>
    <message>
        <source>Save &amp;As</source>
        <comment>428</comment>
        <translation>Spara so&amp;m</translation>
    </message>
    <message>
        <source>&amp;Print</source>
        <comment>429</comment>
        <translation>Skriv &amp;ut</translation>
    </message>
    <message>
        <source>&amp;Colors</source>
        <comment>431</comment>
        <translation>&amp;Färger</translation>
    </message>
    <message>
        <source>&amp;Grid</source>
        <comment>433</comment>
        <translation>&amp;Rutnät</translation>
    </message>
    <message>
        <source>&amp;Axis</source>
        <comment>434</comment>
        <translation>&amp;Axlar</translation>
    </message>
    <message>
        <source>&amp;Function graph</source>
        <comment>435</comment>
        <translation>&amp;Funktionsgraf</translation>
    </message>
    <message>
        <source>only digits, - and </source>
        <comment>443</comment>
        <translation>bara siffror, - och </translation>
    </message>
    <message>
        <source>&amp;Degrees</source>
        <comment>452</comment>
        <translation>&amp;Grader</translation>
    </message>
    <message>
        <source>Ra&amp;dians</source>
        <comment>453</comment>
        <translation>Ra&amp;dianer</translation>
    </message>
    <message>
        <source>&amp;Gradient</source>
        <comment>454</comment>
        <translation>G&amp;on</translation>
    </message>
    <message>
        <source>Exact trigs&amp;cale</source>
        <comment>456</comment>
        <translation>Exakt trig&amp;skala</translation>
    </message>
    <message>
        <source>Axis</source>
        <comment>461</comment>
        <translation>Axlar</translation>
    </message>
    <message>
        <source>0 for no ticks</source>
        <comment>465</comment>
        <translation>0 för inga skalstreck</translation>
    </message>
    <message>
        <source>Please set size between min 5 and max 10</source>
        <comment>468</comment>
        <translation>Teckenstorlek för axlarnas siffror</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <comment>469</comment>
        <translation>T&amp;a bort</translation>
    </message>
    <message>
        <source>&amp;Fontsize for axis-ticks</source>
        <comment>470</comment>
        <translation>&amp;Teckenstorlek för axlarnas siffror</translation>
    </message>
    <message>
        <source>&amp;Decimal</source>
        <comment>472</comment>
        <translation>&amp;Decimalform</translation>
    </message>
    <message>
        <source>&amp;Fractional</source>
        <comment>473</comment>
        <translation>&amp;Bråkform</translation>
    </message>
    <message>
        <source>&amp;Change color</source>
        <comment>474</comment>
        <translation>&amp;Byt färg</translation>
    </message>
    <message>
        <source>&amp;Tangents</source>
        <comment>475</comment>
        <translation>&amp;Tangenter</translation>
    </message>
    <message>
        <source>&amp;Fill</source>
        <comment>477</comment>
        <translation>&amp;Fyll</translation>
    </message>
    <message>
        <source>&amp;Vertical lines</source>
        <comment>478</comment>
        <translation>&amp;Lodräta linjer</translation>
    </message>
    <message>
        <source>&amp;Fillcolor</source>
        <comment>479</comment>
        <translation>F&amp;yllnadsfärg</translation>
    </message>
    <message>
        <source>&amp;Horizontal lines</source>
        <comment>480</comment>
        <translation>&amp;Vågräta linjer</translation>
    </message>
    <message>
        <source>Trace</source>
        <comment>484</comment>
        <translation>Spåra</translation>
    </message>
    <message>
        <source>Primitive function</source>
        <comment>485</comment>
        <translation>Primitiv funktion</translation>
    </message>
    <message>
        <source>Derivative</source>
        <comment>486</comment>
        <translation>Derivata</translation>
    </message>
    <message>
        <source>&amp;Window background</source>
        <comment>488</comment>
        <translation>Fönstrets &amp;bakgrund</translation>
    </message>
    <message>
        <source>Stepwise</source>
        <comment>489</comment>
        <translation>Stegvis</translation>
    </message>
    <message>
        <source>To beginning</source>
        <comment>490</comment>
        <translation>Till början</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <comment>491</comment>
        <translation>Zooma in</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <comment>492</comment>
        <translation>Zooma ut</translation>
    </message>
    <message>
        <source>Doubleclick to start zoom in</source>
        <comment>493</comment>
        <translation>Dubbelklicka för att börja zooma in</translation>
    </message>
    <message>
        <source>Save changes?</source>
        <comment>620</comment>
        <translation>Vill du spara ändringarna?</translation>
    </message>
    <message>
        <source>Cancel</source>
        <comment>705</comment>
        <translation>Avbryt</translation>
    </message>
    <message>
        <source>Draw</source>
        <comment>710</comment>
        <translation>Rita</translation>
    </message>
    <message>
        <source>Comma(,)</source>
        <comment>1001</comment>
        <translation>Komma (,)</translation>
    </message>
    <message>
        <source>Colon(:)</source>
        <comment>1002</comment>
        <translation>Kolon (:)</translation>
    </message>
    <message>
        <source>Semicolon(;)</source>
        <comment>1003</comment>
        <translation>Semikolon (;)</translation>
    </message>
    <message>
        <source>Vertical bar(|)</source>
        <comment>1004</comment>
        <translation>Lodstreck (|)</translation>
    </message>
    <message>
        <source>Coordinate system settings</source>
        <comment>1005</comment>
        <translation>Inställningar för koordinatsystemet</translation>
    </message>
    <message>
        <source>Coordinate separator</source>
        <comment>1006</comment>
        <translation>Skiljetecken mellan koordinater</translation>
    </message>
    <message>
        <source>Axis arrows</source>
        <comment>1007</comment>
        <translation>Pilar på axlarna</translation>
    </message>
    <message>
        <source>Fi&amp;le</source>
        <comment>2000</comment>
        <translation>&amp;Arkiv</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <comment>2001</comment>
        <translation>&amp;Avsluta</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <comment>2002</comment>
        <translation>&amp;Redigera</translation>
    </message>
    <message>
        <source>&amp;Zoom</source>
        <comment>2003</comment>
        <translation>&amp;Zooma</translation>
    </message>
    <message>
        <source>T&amp;ools</source>
        <comment>2004</comment>
        <translation>&amp;Verktyg</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <comment>2005</comment>
        <translation>I&amp;nställningar</translation>
    </message>
    <message>
        <source>&amp;Koordinatsystem</source>
        <comment>2006</comment>
        <translation>&amp;Koordinatsystem</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <comment>2007</comment>
        <translation>&amp;Hjälp</translation>
    </message>
    <message>
        <source>&amp;Contents</source>
        <comment>2008</comment>
        <translation>&amp;Innehåll</translation>
    </message>
    <message>
        <source>&amp;Search for Help On...</source>
        <comment>2009</comment>
        <translation>&amp;Sök i hjälpen...</translation>
    </message>
    <message>
        <source>&amp;About Curvix</source>
        <comment>2010</comment>
        <translation>&amp;Om Curvix</translation>
    </message>
    <message>
        <source>OK</source>
        <comment>2011</comment>
        <translation>OK</translation>
    </message>
    <message>
        <source>Function</source>
        <comment>2012</comment>
        <translation>Funktion</translation>
    </message>
    <message>
        <source>x: min, max, step, ticks</source>
        <comment>2013</comment>
        <translation>x: min, max, steg, skalstreck</translation>
    </message>
    <message>
        <source>y: min, max, step, ticks</source>
        <comment>2014</comment>
        <translation>y: min, max, steg, skalstreck</translation>
    </message>
    <message>
        <source>Angle unit</source>
        <comment>2015</comment>
        <translation>Vinkelenhet</translation>
    </message>
    <message>
        <source>Overflow</source>
        <comment>2016</comment>
        <translation>För många fyllningar</translation>
    </message>
    <message>
        <source>The function label, e.g. f(x): the letter in parentheses is the variable</source>
        <comment>2017</comment>
        <translation>Funktionens namn, t.ex. f(x): bokstaven inom parentes är variabeln</translation>
    </message>
    <message>
        <source>Type a function of one variable and press Enter or Draw</source>
        <comment>2018</comment>
        <translation>Skriv en funktion av en variabel och tryck på Enter eller Rita</translation>
    </message>
    <message>
        <source>Axes</source>
        <comment>2019</comment>
        <translation>Axlar</translation>
    </message>
    <message>
        <source>Minimum</source>
        <comment>2020</comment>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>Maximum</source>
        <comment>2021</comment>
        <translation>Maximum</translation>
    </message>
    <message>
        <source>Step</source>
        <comment>2022</comment>
        <translation>Steg</translation>
    </message>
    <message>
        <source>Ticks</source>
        <comment>2023</comment>
        <translation>Skalstreck</translation>
    </message>
    <message>
        <source>Arrows at the axis ends</source>
        <comment>2024</comment>
        <translation>Pilar i axlarnas ändar</translation>
    </message>
    <message>
        <source>Numbers at the ticks</source>
        <comment>2025</comment>
        <translation>Siffror vid skalstrecken</translation>
    </message>
    <message>
        <source>x %1</source>
        <comment>2030</comment>
        <translation>x %1</translation>
    </message>
    <message>
        <source>y %1</source>
        <comment>2031</comment>
        <translation>y %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number (%2); the last good view is kept</source>
        <comment>2032</comment>
        <translation>&quot;%1&quot; är inget tal (%2); den senaste fungerande vyn behålls</translation>
    </message>
    <message>
        <source>The %1 must be below the %2; the last good view is kept</source>
        <comment>2033</comment>
        <translation>%1 måste vara mindre än %2; den senaste fungerande vyn behålls</translation>
    </message>
    <message>
        <source>The %1 must not be below 0, and must be above 0 while ticks are on; the last good view is kept</source>
        <comment>2034</comment>
        <translation>%1 får inte vara mindre än 0 och måste vara större än 0 när skalstreck visas; den senaste fungerande vyn behålls</translation>
    </message>
    <message>
        <source>Text</source>
        <comment>2026</comment>
        <translation>Text</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no label: write a name and its variable, such as f(x), or one small letter</source>
        <comment>2027</comment>
        <translation>&quot;%1&quot; är inget namn: skriv ett namn och dess variabel, som f(x), eller en liten bokstav</translation>
    </message>
    <message>
        <source>A number, or a multiple of π such as 2p</source>
        <comment>2040</comment>
        <translation>Ett tal eller en multipel av π, som 2p</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <comment>2041</comment>
        <translation>&amp;Lägg till</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <comment>2042</comment>
        <translation>&amp;Ta bort</translation>
    </message>
    <message>
        <source>Remove a&amp;ll</source>
        <comment>2043</comment>
        <translation>Ta bort &amp;alla</translation>
    </message>
    <message>
        <source>Close</source>
        <comment>2044</comment>
        <translation>Stäng</translation>
    </message>
    <message>
        <source>(min 5,  max 10)</source>
        <comment>2045</comment>
        <translation> (5 till 10):</translation>
    </message>
    <message>
        <source>The clipboard cannot be reached.</source>
        <comment>2050</comment>
        <translation>Det går inte att komma åt urklippet.</translation>
    </message>
    <message>
        <source>The printer could not be started.</source>
        <comment>2051</comment>
        <translation>Skrivaren gick inte att starta.</translation>
    </message>
    <message>
        <source>About Curvix</source>
        <comment>3000</comment>
        <translation>Om Curvix</translation>
    </message>
    <message>
        <source>Function graphs for school mathematics</source>
        <comment>3001</comment>
        <translation>Funktionsgrafer för skolmatematik</translation>
    </message>
    <message>
        <source>Copyright © 2026 The Curvix developers
Curvix is free software: you may share and change it under the terms of the GNU General Public License, version 3 or (at your option) any later version (GPL-3.0-or-later).
Curvix comes with ABSOLUTELY NO WARRANTY, to the extent permitted by law.</source>
        <comment>3002</comment>
        <translation>Copyright © 2026 Curvix-utvecklarna
Curvix är fri programvara: du får dela och ändra den enligt villkoren i GNU General Public License, version 3 eller (om du vill) någon senare version (GPL-3.0-or-later).
Curvix levereras HELT UTAN GARANTI, i den utsträckning lagen tillåter.</translation>
    </message>
    <message>
        <source>SYMBOLIC.DLL (derivatives and primitive functions): Giac, the computer-algebra library by Bernard Parisse, free software under GPL-3.0-or-later.</source>
        <comment>3003</comment>
        <translation>SYMBOLIC.DLL (derivator och primitiva funktioner): Giac, datoralgebrabiblioteket av Bernard Parisse, fri programvara under GPL-3.0-or-later.</translation>
    </message>
    <message>
        <source>&amp;System Info...</source>
        <comment>3004</comment>
        <translation>&amp;Systeminformation...</translation>
    </message>
    <message>
        <source>Curvix Help</source>
        <comment>3005</comment>
        <translation>Hjälp för Curvix</translation>
    </message>
    <message>
        <source>Contents</source>
        <comment>3006</comment>
        <translation>Innehåll</translation>
    </message>
    <message>
        <source>Search</source>
        <comment>3007</comment>
        <translation>Sök</translation>
    </message>
    <message>
        <source>Type words to find, e.g. tangent</source>
        <comment>3008</comment>
        <translation>Skriv ord att söka efter, t.ex. tangent</translation>
    </message>
    <message>
        <source>Back</source>
        <comment>3009</comment>
        <translation>Bakåt</translation>
    </message>
    <message>
        <source>Forward</source>
        <comment>3010</comment>
        <translation>Framåt</translation>
    </message>
    <message>
        <source>Start page</source>
        <comment>3011</comment>
        <translation>Startsida</translation>
    </message>
    <message>
        <source>No topic contains all of these words.</source>
        <comment>3012</comment>
        <translation>Inget avsnitt innehåller alla de här orden.</translation>
    </message>
    <message>
        <source>Topics with all the words: %1</source>
        <comment>3013</comment>
        <translation>Avsnitt med alla orden: %1</translation>
    </message>
    <message>
        <source>Ingen aktiv funktion</source>
        <comment>2090</comment>
        <translation>Ingen aktiv funktion</translation>
    </message>
    <message>
        <source>Endast en variabel per omgång</source>
        <comment>2091</comment>
        <translation>Endast en variabel åt gången: börja en ny ritning eller ta bort funktionerna som använder en annan bokstav</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <comment>2092</comment>
        <translation>&amp;Språk</translation>
    </message>
    <message>
        <source>&amp;System language</source>
        <comment>2093</comment>
        <translation>&amp;Systemets språk</translation>
    </message>
    <message>
        <source>The new language takes effect when Curvix starts next time.</source>
        <comment>2094</comment>
        <translation>Det nya språket används när Curvix startar nästa gång.</translation>
    </message>
    <message>
        <source>The %1 and %2 are too close together for numbers that large; the last good view is kept</source>
        <comment>2035</comment>
        <translation>%1 och %2 ligger för nära varandra för så stora tal; den senaste fungerande vyn behålls</translation>
    </message>
    <message>
        <source>Remove &amp;tangents</source>
        <comment>2060</comment>
        <translation>Ta &amp;bort tangenterna</translation>
    </message>
    <message>
        <source>Play the trace</source>
        <comment>2061</comment>
        <translation>Spela upp spårningen</translation>
    </message>
    <message>
        <source>Pause the trace</source>
        <comment>2062</comment>
        <translation>Pausa spårningen</translation>
    </message>
    <message>
        <source>One step of the trace (or the arrow keys)</source>
        <comment>2063</comment>
        <translation>Ett steg i spårningen (eller piltangenterna)</translation>
    </message>
    <message>
        <source>Click on the plot to put a tangent on the nearest curve there</source>
        <comment>2064</comment>
        <translation>Klicka i grafen för att sätta en tangent på den närmaste kurvan där</translation>
    </message>
    <message>
        <source>The formula of the formula picture</source>
        <comment>2070</comment>
        <translation>Formelbildens formel</translation>
    </message>
    <message>
        <source>This formula cannot be written out; the picture stays as it was.</source>
        <comment>2071</comment>
        <translation>Den här formeln kan inte visas som bild; bilden förblir som den var.</translation>
    </message>
    <message>
        <source>A label: drag selected text onto the plot</source>
        <comment>2072</comment>
        <translation>En etikett: dra markerad text till grafen</translation>
    </message>
    <message>
        <source>The function as a picture: drag it onto the plot (Alt+Q edits it)</source>
        <comment>2073</comment>
        <translation>Funktionen som bild: dra den till grafen (Alt+Q redigerar den)</translation>
    </message>
    <message>
        <source>Derivative and tangent</source>
        <comment>4000</comment>
        <translation>Derivata och tangent</translation>
    </message>
    <message>
        <source>x from</source>
        <comment>4001</comment>
        <translation>x från</translation>
    </message>
    <message>
        <source>x to</source>
        <comment>4002</comment>
        <translation>x till</translation>
    </message>
    <message>
        <source>Step length</source>
        <comment>4003</comment>
        <translation>Steglängd</translation>
    </message>
    <message>
        <source>Draw the &amp;derivative&apos;s graph</source>
        <comment>4004</comment>
        <translation>Rita &amp;derivatans graf</translation>
    </message>
    <message>
        <source>&amp;Start</source>
        <comment>4005</comment>
        <translation>&amp;Starta</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <comment>4006</comment>
        <translation>&amp;Pausa</translation>
    </message>
    <message>
        <source>S&amp;tep</source>
        <comment>4007</comment>
        <translation>St&amp;eg</translation>
    </message>
    <message>
        <source>St&amp;op</source>
        <comment>4008</comment>
        <translation>Sta&amp;nna</translation>
    </message>
    <message>
        <source>&amp;Sort</source>
        <comment>4009</comment>
        <translation>S&amp;ortera</translation>
    </message>
    <message>
        <source>OK</source>
        <comment>4010</comment>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <comment>4011</comment>
        <translation>Avbryt</translation>
    </message>
    <message>
        <source>x coordinates (used instead of the range when the list has values)</source>
        <comment>4012</comment>
        <translation>x-koordinater (används i stället för intervallet när listan har värden)</translation>
    </message>
    <message>
        <source>Vertical lines x =</source>
        <comment>4013</comment>
        <translation>Lodräta linjer x =</translation>
    </message>
    <message>
        <source>Horizontal lines y =</source>
        <comment>4014</comment>
        <translation>Vågräta linjer y =</translation>
    </message>
    <message>
        <source>The tangent along the curve of the function</source>
        <comment>4015</comment>
        <translation>Tangenten längs funktionens kurva</translation>
    </message>
    <message>
        <source>Write a number (or a multiple of π such as 2p) in x from, x to and step length.</source>
        <comment>4020</comment>
        <translation>Skriv ett tal (eller en multipel av π, som 2p) i x från, x till och steglängd.</translation>
    </message>
    <message>
        <source>x from must be less than x to.</source>
        <comment>4021</comment>
        <translation>x från måste vara mindre än x till.</translation>
    </message>
    <message>
        <source>The step length must be greater than 0.</source>
        <comment>4022</comment>
        <translation>Steglängden måste vara större än 0.</translation>
    </message>
    <message>
        <source>That is more than %1 steps: choose a longer step length or a shorter range.</source>
        <comment>4023</comment>
        <translation>Det blir fler än %1 steg: välj en längre steglängd eller ett kortare intervall.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number. Write a number, or a multiple of π such as 2p.</source>
        <comment>4024</comment>
        <translation>&quot;%1&quot; är inget tal. Skriv ett tal eller en multipel av π, som 2p.</translation>
    </message>
    <message>
        <source>The list of functions is full.</source>
        <comment>4025</comment>
        <translation>Listan med funktioner är full.</translation>
    </message>
    <message>
        <source>Derivative and tangent demonstration</source>
        <comment>4026</comment>
        <translation>Demonstration av derivata och tangent</translation>
    </message>
    <message>
        <source>zero</source>
        <comment>5000</comment>
        <translation>noll</translation>
    </message>
    <message>
        <source>one</source>
        <comment>5001</comment>
        <translation>ett</translation>
    </message>
    <message>
        <source>two</source>
        <comment>5002</comment>
        <translation>två</translation>
    </message>
    <message>
        <source>three</source>
        <comment>5003</comment>
        <translation>tre</translation>
    </message>
    <message>
        <source>four</source>
        <comment>5004</comment>
        <translation>fyra</translation>
    </message>
    <message>
        <source>five</source>
        <comment>5005</comment>
        <translation>fem</translation>
    </message>
    <message>
        <source>six</source>
        <comment>5006</comment>
        <translation>sex</translation>
    </message>
    <message>
        <source>seven</source>
        <comment>5007</comment>
        <translation>sju</translation>
    </message>
    <message>
        <source>eight</source>
        <comment>5008</comment>
        <translation>åtta</translation>
    </message>
    <message>
        <source>nine</source>
        <comment>5009</comment>
        <translation>nio</translation>
    </message>
    <message>
        <source>decimal point</source>
        <comment>5010</comment>
        <translation>decimaltecken</translation>
    </message>
    <message>
        <source>plus</source>
        <comment>5011</comment>
        <translation>plus</translation>
    </message>
    <message>
        <source>minus</source>
        <comment>5012</comment>
        <translation>minus</translation>
    </message>
    <message>
        <source>times</source>
        <comment>5013</comment>
        <translation>gånger</translation>
    </message>
    <message>
        <source>divided by</source>
        <comment>5014</comment>
        <translation>delat med</translation>
    </message>
    <message>
        <source>power</source>
        <comment>5015</comment>
        <translation>upphöjt till</translation>
    </message>
    <message>
        <source>pi</source>
        <comment>5016</comment>
        <translation>pi</translation>
    </message>
    <message>
        <source>Euler&apos;s number e</source>
        <comment>5017</comment>
        <translation>Eulers tal e</translation>
    </message>
    <message>
        <source>left parenthesis</source>
        <comment>5018</comment>
        <translation>vänsterparentes</translation>
    </message>
    <message>
        <source>right parenthesis</source>
        <comment>5019</comment>
        <translation>högerparentes</translation>
    </message>
    <message>
        <source>square root</source>
        <comment>5020</comment>
        <translation>kvadratrot</translation>
    </message>
    <message>
        <source>sine</source>
        <comment>5021</comment>
        <translation>sinus</translation>
    </message>
    <message>
        <source>cosine</source>
        <comment>5022</comment>
        <translation>cosinus</translation>
    </message>
    <message>
        <source>tangent</source>
        <comment>5023</comment>
        <translation>tangens</translation>
    </message>
    <message>
        <source>arc sine</source>
        <comment>5024</comment>
        <translation>arcussinus</translation>
    </message>
    <message>
        <source>arc cosine</source>
        <comment>5025</comment>
        <translation>arcuscosinus</translation>
    </message>
    <message>
        <source>arc tangent</source>
        <comment>5026</comment>
        <translation>arcustangens</translation>
    </message>
    <message>
        <source>exponential function</source>
        <comment>5027</comment>
        <translation>exponentialfunktion</translation>
    </message>
    <message>
        <source>natural logarithm</source>
        <comment>5028</comment>
        <translation>naturlig logaritm</translation>
    </message>
    <message>
        <source>logarithm base 10</source>
        <comment>5029</comment>
        <translation>tiologaritm</translation>
    </message>
    <message>
        <source>the variable</source>
        <comment>5030</comment>
        <translation>variabeln</translation>
    </message>
    <message>
        <source>clear</source>
        <comment>5031</comment>
        <translation>rensa</translation>
    </message>
    <message>
        <source>Function label</source>
        <comment>5040</comment>
        <translation>Funktionens namn</translation>
    </message>
    <message>
        <source>Function</source>
        <comment>5041</comment>
        <translation>Funktion</translation>
    </message>
    <message>
        <source>Draw the function in the function box</source>
        <comment>5042</comment>
        <translation>Rita funktionen i funktionsrutan</translation>
    </message>
    <message>
        <source>x minimum</source>
        <comment>5043</comment>
        <translation>x minsta värde</translation>
    </message>
    <message>
        <source>x maximum</source>
        <comment>5044</comment>
        <translation>x största värde</translation>
    </message>
    <message>
        <source>x step</source>
        <comment>5045</comment>
        <translation>x steg</translation>
    </message>
    <message>
        <source>x ticks</source>
        <comment>5046</comment>
        <translation>x skalstreck</translation>
    </message>
    <message>
        <source>y minimum</source>
        <comment>5047</comment>
        <translation>y minsta värde</translation>
    </message>
    <message>
        <source>y maximum</source>
        <comment>5048</comment>
        <translation>y största värde</translation>
    </message>
    <message>
        <source>y step</source>
        <comment>5049</comment>
        <translation>y steg</translation>
    </message>
    <message>
        <source>y ticks</source>
        <comment>5050</comment>
        <translation>y skalstreck</translation>
    </message>
    <message>
        <source>The smallest value shown (p stands for π)</source>
        <comment>5051</comment>
        <translation>Det minsta värdet som visas (p står för π)</translation>
    </message>
    <message>
        <source>The largest value shown (p stands for π)</source>
        <comment>5052</comment>
        <translation>Det största värdet som visas (p står för π)</translation>
    </message>
    <message>
        <source>The distance between grid lines</source>
        <comment>5053</comment>
        <translation>Avståndet mellan rutnätets linjer</translation>
    </message>
    <message>
        <source>%1 in whole and fractional multiples of π</source>
        <comment>5054</comment>
        <translation>%1 i hela multipler och bråkdelar av π</translation>
    </message>
    <message>
        <source>A whole multiple of π and a fraction of π</source>
        <comment>5055</comment>
        <translation>En hel multipel av π och ett bråk av π</translation>
    </message>
    <message>
        <source>Angles in degrees</source>
        <comment>5056</comment>
        <translation>Vinklar i grader</translation>
    </message>
    <message>
        <source>Angles in radians</source>
        <comment>5057</comment>
        <translation>Vinklar i radianer</translation>
    </message>
    <message>
        <source>Angles in gradians</source>
        <comment>5058</comment>
        <translation>Vinklar i gon</translation>
    </message>
    <message>
        <source>Tick labels at multiples of π, as decimals or fractions</source>
        <comment>5059</comment>
        <translation>Siffror vid multipler av π, som decimaltal eller bråk</translation>
    </message>
    <message>
        <source>Show the grid</source>
        <comment>5060</comment>
        <translation>Visa rutnätet</translation>
    </message>
    <message>
        <source>Label text</source>
        <comment>5061</comment>
        <translation>Etikettens text</translation>
    </message>
    <message>
        <source>Formula picture</source>
        <comment>5062</comment>
        <translation>Formelbild</translation>
    </message>
    <message>
        <source>Plot area</source>
        <comment>5063</comment>
        <translation>Grafområde</translation>
    </message>
    <message>
        <source>Right-click for the tools, double-click a curve for a point label, turn the wheel to zoom</source>
        <comment>5064</comment>
        <translation>Högerklicka för verktygen, dubbelklicka på en kurva för en punktetikett, vrid på hjulet för att zooma</translation>
    </message>
    <message>
        <source>Resize the plot</source>
        <comment>5065</comment>
        <translation>Ändra grafens storlek</translation>
    </message>
    <message>
        <source>Status, part %1</source>
        <comment>5066</comment>
        <translation>Status, del %1</translation>
    </message>
    <message>
        <source>Keypad: %1</source>
        <comment>5067</comment>
        <translation>Knappsats: %1</translation>
    </message>
    <message>
        <source>Tr&amp;ace</source>
        <comment>5070</comment>
        <translation>&amp;Spåra</translation>
    </message>
    <message>
        <source>De&amp;rivative</source>
        <comment>5071</comment>
        <translation>&amp;Derivata</translation>
    </message>
    <message>
        <source>&amp;Primitive function</source>
        <comment>5072</comment>
        <translation>&amp;Primitiv funktion</translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <comment>5073</comment>
        <translation>Zooma &amp;in</translation>
    </message>
    <message>
        <source>Zoom &amp;out</source>
        <comment>5074</comment>
        <translation>Zooma &amp;ut</translation>
    </message>
    <message>
        <source>&amp;Stepwise</source>
        <comment>5075</comment>
        <translation>&amp;Stegvis</translation>
    </message>
    <message>
        <source>To &amp;beginning</source>
        <comment>5076</comment>
        <translation>Till &amp;början</translation>
    </message>
    <message>
        <source>&amp;Equal scale</source>
        <comment>5085</comment>
        <translation>&amp;Lika skala</translation>
    </message>
    <message>
        <source>Derivative and ta&amp;ngent</source>
        <comment>5077</comment>
        <translation>Derivata och ta&amp;ngent</translation>
    </message>
    <message>
        <source>The settings could not be saved: %1 cannot be written.</source>
        <comment>5090</comment>
        <translation>Inställningarna kunde inte sparas: det går inte att skriva till %1.</translation>
    </message>
    <message>
        <source>The settings could not be saved: %1 is not a settings file.</source>
        <comment>5091</comment>
        <translation>Inställningarna kunde inte sparas: %1 är ingen inställningsfil.</translation>
    </message>
    <message>
        <source>A &amp;new colour for each function</source>
        <comment>5140</comment>
        <translation>&amp;Ny färg för varje funktion</translation>
    </message>
    <message>
        <source>Change c&amp;olour…</source>
        <comment>5141</comment>
        <translation>Byt &amp;färg…</translation>
    </message>
    <message>
        <source>Smoot&amp;h curves</source>
        <comment>5142</comment>
        <translation>&amp;Mjuka kurvor</translation>
    </message>
    <message>
        <source>%1 is drawn already.</source>
        <comment>5143</comment>
        <translation>%1 är redan ritad.</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <comment>5144</comment>
        <translation>&amp;Ersätt</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <comment>5145</comment>
        <translation>&amp;Redigera</translation>
    </message>
    <message>
        <source>Editing %1: Enter replaces it, Esc leaves it as it was.</source>
        <comment>5146</comment>
        <translation>Du redigerar %1: Enter ersätter den, Esc lämnar den som den var.</translation>
    </message>
    <message>
        <source>Editing:</source>
        <comment>5147</comment>
        <translation>Redigerar:</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <comment>5150</comment>
        <translation>&amp;Öppna…</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <comment>5151</comment>
        <translation>Öppna s&amp;enaste</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <comment>5152</comment>
        <translation>&amp;Spara</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <comment>5153</comment>
        <translation>&amp;Ångra</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <comment>5154</comment>
        <translation>&amp;Gör om</translation>
    </message>
    <message>
        <source>Curvix drawing (*.curvix)</source>
        <comment>5155</comment>
        <translation>Curvix-ritning (*.curvix)</translation>
    </message>
    <message>
        <source>Curvix was not closed properly last time. Restore the drawing it was working on?</source>
        <comment>5156</comment>
        <translation>Curvix avslutades inte ordentligt förra gången. Vill du återställa ritningen som var öppen?</translation>
    </message>
    <message>
        <source>Open Drawing</source>
        <comment>5157</comment>
        <translation>Öppna ritning</translation>
    </message>
    <message>
        <source>%1 is not there any more.</source>
        <comment>5158</comment>
        <translation>%1 finns inte längre.</translation>
    </message>
    <message>
        <source>Clear the list</source>
        <comment>5159</comment>
        <translation>Töm listan</translation>
    </message>
    <message>
        <source>The recovery file %1 could not be read: %2</source>
        <comment>5160</comment>
        <translation>Återställningsfilen %1 kunde inte läsas: %2</translation>
    </message>
    <message>
        <source>Calculating… (Esc cancels)</source>
        <comment>5078</comment>
        <translation>Beräknar… (Esc avbryter)</translation>
    </message>
    <message>
        <source>x of the trace: type a value and press Enter</source>
        <comment>5180</comment>
        <translation>Spårningens x: skriv ett värde och tryck på Enter</translation>
    </message>
    <message>
        <source>not defined at x = %1</source>
        <comment>5181</comment>
        <translation>inte definierad för x = %1</translation>
    </message>
    <message>
        <source>vertical tangent at x = %1</source>
        <comment>5182</comment>
        <translation>lodrät tangent vid x = %1</translation>
    </message>
    <message>
        <source>Remove this tangent</source>
        <comment>5183</comment>
        <translation>Ta bort den här tangenten</translation>
    </message>
    <message>
        <source>Steps per second</source>
        <comment>5184</comment>
        <translation>Steg per sekund</translation>
    </message>
    <message>
        <source>tangent</source>
        <comment>5185</comment>
        <translation>tangent</translation>
    </message>
    <message>
        <source>x = %1 is outside the view</source>
        <comment>5186</comment>
        <translation>x = %1 ligger utanför vyn</translation>
    </message>
    <message>
        <source>Print Pre&amp;view</source>
        <comment>2100</comment>
        <translation>&amp;Förhandsgranska utskrift</translation>
    </message>
    <message>
        <source>%1 cannot be saved: Curvix writes only these types: %2</source>
        <comment>2095</comment>
        <translation>%1 kan inte sparas: Curvix skriver bara dessa typer: %2</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <comment>2096</comment>
        <translation>%1 finns redan.
Vill du ersätta den?</translation>
    </message>
    <message>
        <source>Could not save %1: %2</source>
        <comment>2097</comment>
        <translation>Det gick inte att spara %1: %2</translation>
    </message>
    <message>
        <source>Expor&amp;t…</source>
        <comment>2098</comment>
        <translation>E&amp;xportera…</translation>
    </message>
    <message>
        <source>graph</source>
        <comment>2099</comment>
        <translation>graf</translation>
    </message>
    <message>
        <source>Export</source>
        <comment>2110</comment>
        <translation>Exportera</translation>
    </message>
    <message>
        <source>Size in:</source>
        <comment>2111</comment>
        <translation>Storlek i:</translation>
    </message>
    <message>
        <source>pixels</source>
        <comment>2112</comment>
        <translation>bildpunkter</translation>
    </message>
    <message>
        <source>centimetres</source>
        <comment>2113</comment>
        <translation>centimeter</translation>
    </message>
    <message>
        <source>Width:</source>
        <comment>2114</comment>
        <translation>Bredd:</translation>
    </message>
    <message>
        <source>Height:</source>
        <comment>2115</comment>
        <translation>Höjd:</translation>
    </message>
    <message>
        <source>Resolution:</source>
        <comment>2116</comment>
        <translation>Upplösning:</translation>
    </message>
    <message>
        <source>Transparent background (PNG and SVG)</source>
        <comment>2118</comment>
        <translation>Genomskinlig bakgrund (PNG och SVG)</translation>
    </message>
    <message>
        <source>Line width:</source>
        <comment>2119</comment>
        <translation>Linjebredd:</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <comment>2120</comment>
        <translation>%1 × %2 bildpunkter</translation>
    </message>
    <message>
        <source>Too large: at most %1 pixels a side</source>
        <comment>2121</comment>
        <translation>För stor: högst %1 bildpunkter per sida</translation>
    </message>
</context>
<context>
    <name>SymbolicText</name>
    <message>
        <source>Error in derivative calculation</source>
        <translation>Fel vid beräkning av derivatan</translation>
    </message>
    <message>
        <source>Error in calculation of primitive function</source>
        <translation>Fel vid beräkning av primitiv funktion</translation>
    </message>
    <message>
        <source>Error in primitive calculation</source>
        <translation>Fel i den primitiva beräkningen</translation>
    </message>
</context>
<context>
    <name>ValueTable</name>
    <message>
        <source>&apos;%1&apos; is not a number</source>
        <translation>&apos;%1&apos; är inget tal</translation>
    </message>
    <message>
        <source>the step must not be 0</source>
        <translation>steget får inte vara 0</translation>
    </message>
    <message>
        <source>more than %1 rows</source>
        <translation>fler än %1 rader</translation>
    </message>
</context>
<context>
    <name>curvix::app::AreaTools</name>
    <message>
        <source>&amp;Area…</source>
        <translation>Ar&amp;ea…</translation>
    </message>
    <message>
        <source>Remove area&amp;s</source>
        <translation>Ta bort are&amp;or</translation>
    </message>
</context>
<context>
    <name>curvix::app::CurveTools</name>
    <message>
        <source>TRACE</source>
        <translation>SPÅR</translation>
    </message>
</context>
<context>
    <name>curvix::app::Demonstration</name>
    <message>
        <source>Derivata/tangent</source>
        <translation>Derivata/tangent</translation>
    </message>
</context>
<context>
    <name>curvix::app::FractionInput</name>
    <message>
        <source>%1, whole multiple of π</source>
        <translation>%1, hel multipel av π</translation>
    </message>
    <message>
        <source>%1, numerator</source>
        <translation>%1, täljare</translation>
    </message>
    <message>
        <source>%1, denominator</source>
        <translation>%1, nämnare</translation>
    </message>
</context>
<context>
    <name>curvix::app::ParameterActions</name>
    <message>
        <source>Parameters</source>
        <translation>Parametrar</translation>
    </message>
    <message>
        <source>Para&amp;meters</source>
        <translation>Para&amp;metrar</translation>
    </message>
</context>
<context>
    <name>curvix::app::ParameterDialog</name>
    <message>
        <source>Add a parameter</source>
        <translation>Lägg till en parameter</translation>
    </message>
    <message>
        <source>Parameter %1</source>
        <translation>Parameter %1</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Namn:</translation>
    </message>
    <message>
        <source>&amp;Value:</source>
        <translation>&amp;Värde:</translation>
    </message>
    <message>
        <source>M&amp;inimum:</source>
        <translation>M&amp;inimum:</translation>
    </message>
    <message>
        <source>M&amp;aximum:</source>
        <translation>M&amp;aximum:</translation>
    </message>
    <message>
        <source>&amp;Step:</source>
        <translation>&amp;Steg:</translation>
    </message>
    <message>
        <source>The name must be one small letter, such as a.</source>
        <translation>Namnet måste vara en liten bokstav, till exempel a.</translation>
    </message>
    <message>
        <source>The name cannot be e: e is Euler&apos;s number.</source>
        <translation>Namnet kan inte vara e: e är Eulers tal.</translation>
    </message>
    <message>
        <source>The name cannot be %1: it is the drawing&apos;s variable.</source>
        <translation>Namnet kan inte vara %1: det är ritningens variabel.</translation>
    </message>
    <message>
        <source>There is already a parameter %1.</source>
        <translation>Det finns redan en parameter %1.</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Värde</translation>
    </message>
    <message>
        <source>Minimum</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>Maximum</source>
        <translation>Maximum</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Steg</translation>
    </message>
    <message>
        <source>The %1 box needs a number, such as 2, %2 or 2π.</source>
        <translation>Rutan %1 behöver ett tal, till exempel 2, %2 eller 2π.</translation>
    </message>
    <message>
        <source>The minimum must be below the maximum.</source>
        <translation>Minimum måste vara mindre än maximum.</translation>
    </message>
    <message>
        <source>The step must be above 0.</source>
        <translation>Steget måste vara större än 0.</translation>
    </message>
    <message>
        <source>The value must lie between the minimum and the maximum.</source>
        <translation>Värdet måste ligga mellan minimum och maximum.</translation>
    </message>
</context>
<context>
    <name>curvix::app::ParameterPanel</name>
    <message>
        <source>No parameters. Type a formula with a letter such as a, or press Add.</source>
        <translation>Inga parametrar. Skriv en formel med en bokstav som a, eller tryck Lägg till.</translation>
    </message>
    <message>
        <source>&amp;Add...</source>
        <translation>&amp;Lägg till...</translation>
    </message>
    <message>
        <source>Add a parameter</source>
        <translation>Lägg till en parameter</translation>
    </message>
    <message>
        <source>Value of %1</source>
        <translation>Värdet av %1</translation>
    </message>
    <message>
        <source>Slider for %1</source>
        <translation>Reglage för %1</translation>
    </message>
    <message>
        <source>Play %1</source>
        <translation>Spela %1</translation>
    </message>
    <message>
        <source>Sweep %1 between its bounds and back</source>
        <translation>Svep %1 mellan gränserna och tillbaka</translation>
    </message>
    <message>
        <source>Edit %1</source>
        <translation>Redigera %1</translation>
    </message>
    <message>
        <source>Value, bounds and step of %1</source>
        <translation>Värde, gränser och steg för %1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>Ta bort %1</translation>
    </message>
    <message>
        <source>From %1 to %2 in steps of %3</source>
        <translation>Från %1 till %2 i steg om %3</translation>
    </message>
    <message>
        <source>Stop %1</source>
        <translation>Stoppa %1</translation>
    </message>
</context>
<context>
    <name>curvix::app::PlotView</name>
    <message>
        <source>Ctrl with the arrow keys pans, Page Up and Page Down zoom, the menu key opens the tools; with the trace on, the arrow keys move it and Enter puts a point label, or a tangent in tangent mode, where it stands</source>
        <translation>Ctrl med piltangenterna panorerar, Page Up och Page Down zoomar, menytangenten öppnar verktygen; med spårningen på flyttar piltangenterna den och Enter sätter en punktetikett, eller en tangent i tangentläge, där den står</translation>
    </message>
</context>
<context>
    <name>curvix::app::RangePanel</name>
    <message>
        <source>Rutnät</source>
        <translation>Rutnät</translation>
    </message>
</context>
<context>
    <name>curvix::app::StatusPanels</name>
    <message>
        <source>Pointer position and messages</source>
        <translation>Pekarens position och meddelanden</translation>
    </message>
    <message>
        <source>Traced function</source>
        <translation>Spårad funktion</translation>
    </message>
    <message>
        <source>Demonstrated function</source>
        <translation>Demonstrerad funktion</translation>
    </message>
    <message>
        <source>Trace x</source>
        <translation>Spårningens x</translation>
    </message>
    <message>
        <source>Demonstration x</source>
        <translation>Demonstrationens x</translation>
    </message>
    <message>
        <source>Trace y</source>
        <translation>Spårningens y</translation>
    </message>
    <message>
        <source>Demonstration curves</source>
        <translation>Demonstrationens kurvor</translation>
    </message>
    <message>
        <source>Trace slope</source>
        <translation>Spårningens lutning</translation>
    </message>
    <message>
        <source>Demonstration slope</source>
        <translation>Demonstrationens lutning</translation>
    </message>
</context>
<context>
    <name>curvix::app::ValueTableDialog</name>
    <message>
        <source>Table of values</source>
        <translation>Värdetabell</translation>
    </message>
    <message>
        <source>x from</source>
        <translation>x från</translation>
    </message>
    <message>
        <source>to</source>
        <translation>till</translation>
    </message>
    <message>
        <source>step</source>
        <translation>steg</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopiera</translation>
    </message>
    <message>
        <source>&amp;Save CSV...</source>
        <translation>&amp;Spara CSV...</translation>
    </message>
    <message>
        <source>Save table</source>
        <translation>Spara tabellen</translation>
    </message>
    <message>
        <source>CSV files (*.csv)</source>
        <translation>CSV-filer (*.csv)</translation>
    </message>
    <message>
        <source>Could not save %1: %2</source>
        <translation>Det gick inte att spara %1: %2</translation>
    </message>
</context>
<context>
    <name>curvix::app::ZoomBoxWidget</name>
    <message>
        <source>Dubbelklicka för att zooma in</source>
        <translation>Dubbelklicka eller tryck Enter för att zooma in</translation>
    </message>
    <message>
        <source>Zoom box</source>
        <translation>Zoomruta</translation>
    </message>
    <message>
        <source>Arrow keys move it, Shift with the arrow keys resizes it, Enter zooms in, Esc closes it</source>
        <translation>Piltangenterna flyttar den, Skift med piltangenterna ändrar storleken, Enter zoomar in, Esc stänger den</translation>
    </message>
</context>
<context>
    <name>curvix::app::frmAbout1</name>
    <message>
        <source>System Information Is Unavailable At This Time</source>
        <translation>Systeminformation är inte tillgänglig just nu</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
</context>
</TS>
