<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>Area</name>
    <message>
        <source>The integral diverges on %1.</source>
        <translation>The integral diverges on %1.</translation>
    </message>
    <message>
        <source>The function is not defined on the whole interval %1.</source>
        <translation>The function is not defined on the whole interval %1.</translation>
    </message>
    <message>
        <source>∫ diverges</source>
        <translation>∫ diverges</translation>
    </message>
    <message>
        <source>∫ not defined</source>
        <translation>∫ not defined</translation>
    </message>
    <message>
        <source>   area = %1</source>
        <translation>   area = %1</translation>
    </message>
    <message>
        <source>∫ from %1 to %2 = %3   area = %4</source>
        <translation>∫ from %1 to %2 = %3   area = %4</translation>
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
        <translation>The area between the curve and the x axis:</translation>
    </message>
    <message>
        <source>From</source>
        <translation>From</translation>
    </message>
    <message>
        <source>To</source>
        <translation>To</translation>
    </message>
    <message>
        <source>A number or a calculation; p or π stands for pi, as in p/2</source>
        <translation>A number or a calculation; p or π stands for pi, as in p/2</translation>
    </message>
    <message>
        <source>&amp;From %1 =</source>
        <translation>&amp;From %1 =</translation>
    </message>
    <message>
        <source>&amp;To %1 =</source>
        <translation>&amp;To %1 =</translation>
    </message>
    <message>
        <source>The %1 box needs a number, such as 0, %2, 2π or π/2.</source>
        <translation>The %1 box needs a number, such as 0, %2, 2π or π/2.</translation>
    </message>
</context>
<context>
    <name>DrawingText</name>
    <message>
        <source>it is empty</source>
        <translation>it is empty</translation>
    </message>
    <message>
        <source>it is listed twice</source>
        <translation>it is listed twice</translation>
    </message>
    <message>
        <source>function %1 &apos;%2&apos; cannot be drawn: %3</source>
        <translation>function %1 &apos;%2&apos; cannot be drawn: %3</translation>
    </message>
    <message>
        <source>the functions are not all in the variable &apos;%1&apos;</source>
        <translation>the functions are not all in the variable &apos;%1&apos;</translation>
    </message>
    <message>
        <source>Could not save the drawing %1: %2</source>
        <translation>Could not save the drawing %1: %2</translation>
    </message>
    <message>
        <source>Could not open the drawing %1: %2</source>
        <translation>Could not open the drawing %1: %2</translation>
    </message>
    <message>
        <source>field &apos;%1&apos; %2</source>
        <translation>field &apos;%1&apos; %2</translation>
    </message>
    <message>
        <source>is not a number</source>
        <translation>is not a number</translation>
    </message>
    <message>
        <source>is out of range (at most %1 either way)</source>
        <translation>is out of range (at most %1 either way)</translation>
    </message>
    <message>
        <source>is not a whole number from %1 to %2</source>
        <translation>is not a whole number from %1 to %2</translation>
    </message>
    <message>
        <source>is not true or false</source>
        <translation>is not true or false</translation>
    </message>
    <message>
        <source>is not a text</source>
        <translation>is not a text</translation>
    </message>
    <message>
        <source>is too long (at most %1 characters)</source>
        <translation>is too long (at most %1 characters)</translation>
    </message>
    <message>
        <source>is not an object</source>
        <translation>is not an object</translation>
    </message>
    <message>
        <source>is not a list</source>
        <translation>is not a list</translation>
    </message>
    <message>
        <source>has too many entries (%1; at most %2)</source>
        <translation>has too many entries (%1; at most %2)</translation>
    </message>
    <message>
        <source>is missing</source>
        <translation>is missing</translation>
    </message>
    <message>
        <source>is not a usable range: each minimum must lie below its maximum</source>
        <translation>is not a usable range: each minimum must lie below its maximum</translation>
    </message>
    <message>
        <source>is not a usable range: a step is negative or 0</source>
        <translation>is not a usable range: a step is negative or 0</translation>
    </message>
    <message>
        <source>is not radians, degrees or gradians</source>
        <translation>is not radians, degrees or gradians</translation>
    </message>
    <message>
        <source>not a Curvix drawing</source>
        <translation>not a Curvix drawing</translation>
    </message>
    <message>
        <source>made by a newer Curvix (format version %1); this one reads version %2</source>
        <translation>made by a newer Curvix (format version %1); this one reads version %2</translation>
    </message>
    <message>
        <source>is not a single letter</source>
        <translation>is not a single letter</translation>
    </message>
    <message>
        <source>the file is too large for a drawing (at most %1 bytes)</source>
        <translation>the file is too large for a drawing (at most %1 bytes)</translation>
    </message>
    <message>
        <source>the file is damaged: %1 at byte %2</source>
        <translation>the file is damaged: %1 at byte %2</translation>
    </message>
    <message>
        <source>function %1 &apos;%2&apos; uses %3, which the drawing does not declare as parameters</source>
        <translation>function %1 &apos;%2&apos; uses %3, which the drawing does not declare as parameters</translation>
    </message>
    <message>
        <source>an area lies under curve %1, which is not in the drawing</source>
        <translation>an area lies under curve %1, which is not in the drawing</translation>
    </message>
    <message>
        <source>is not a small letter other than e and the variable</source>
        <translation>is not a small letter other than e and the variable</translation>
    </message>
    <message>
        <source>names a parameter declared before</source>
        <translation>names a parameter declared before</translation>
    </message>
    <message>
        <source>is not below max</source>
        <translation>is not below max</translation>
    </message>
    <message>
        <source>is not greater than 0</source>
        <translation>is not greater than 0</translation>
    </message>
    <message>
        <source>names a curve, but the drawing has none</source>
        <translation>names a curve, but the drawing has none</translation>
    </message>
</context>
<context>
    <name>Formula</name>
    <message>
        <source>Unexpected end of formula</source>
        <translation>Unexpected end of formula</translation>
    </message>
    <message>
        <source>Unexpected character &apos;%1&apos;</source>
        <translation>Unexpected character &apos;%1&apos;</translation>
    </message>
    <message>
        <source>Unknown name &apos;%1&apos;</source>
        <translation>Unknown name &apos;%1&apos;</translation>
    </message>
    <message>
        <source>Missing &apos;)&apos; for &apos;(&apos;</source>
        <translation>Missing &apos;)&apos; for &apos;(&apos;</translation>
    </message>
    <message>
        <source>Missing &apos;(&apos; for &apos;)&apos;</source>
        <translation>Missing &apos;(&apos; for &apos;)&apos;</translation>
    </message>
    <message>
        <source>Invalid number &apos;%1&apos;</source>
        <translation>Invalid number &apos;%1&apos;</translation>
    </message>
    <message>
        <source>A number cannot follow the name &apos;%1&apos;</source>
        <translation>A number cannot follow the name &apos;%1&apos;</translation>
    </message>
    <message>
        <source>Missing &apos;(&apos; after the function &apos;%1&apos;</source>
        <translation>Missing &apos;(&apos; after the function &apos;%1&apos;</translation>
    </message>
    <message>
        <source>The formula is empty</source>
        <translation>The formula is empty</translation>
    </message>
    <message>
        <source>%1 at position %2</source>
        <translation>%1 at position %2</translation>
    </message>
    <message>
        <source>Unexpected number &apos;%1&apos;</source>
        <translation>Unexpected number &apos;%1&apos;</translation>
    </message>
    <message>
        <source>Unexpected &apos;%1&apos;</source>
        <translation>Unexpected &apos;%1&apos;</translation>
    </message>
    <message>
        <source>The formula is too complex</source>
        <translation>The formula is too complex</translation>
    </message>
</context>
<context>
    <name>ParameterText</name>
    <message>
        <source>%1 is a parameter of the drawing; it cannot be the variable too.</source>
        <translation>%1 is a parameter of the drawing; it cannot be the variable too.</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 and %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be a parameter: a parameter is one small letter from a to z, neither e nor the variable %2</source>
        <translation>&apos;%1&apos; cannot be a parameter: a parameter is one small letter from a to z, neither e nor the variable %2</translation>
    </message>
    <message>
        <source>There is a parameter %1 already.</source>
        <translation>There is a parameter %1 already.</translation>
    </message>
    <message>
        <source>The value, the bounds and the step of %1 must be numbers.</source>
        <translation>The value, the bounds and the step of %1 must be numbers.</translation>
    </message>
    <message>
        <source>The minimum of %1 must be less than its maximum.</source>
        <translation>The minimum of %1 must be less than its maximum.</translation>
    </message>
    <message>
        <source>The step of %1 must be greater than 0.</source>
        <translation>The step of %1 must be greater than 0.</translation>
    </message>
    <message>
        <source>%1 cannot be renamed: %2 uses it</source>
        <translation>%1 cannot be renamed: %2 uses it</translation>
    </message>
    <message>
        <source>%1 cannot be renamed: %2 use it</source>
        <translation>%1 cannot be renamed: %2 use it</translation>
    </message>
    <message>
        <source>%1 cannot be deleted: %2 uses it</source>
        <translation>%1 cannot be deleted: %2 uses it</translation>
    </message>
    <message>
        <source>%1 cannot be deleted: %2 use it</source>
        <translation>%1 cannot be deleted: %2 use it</translation>
    </message>
    <message>
        <source>the value %1, from %2 to %3 in steps of %4</source>
        <translation>the value %1, from %2 to %3 in steps of %4</translation>
    </message>
    <message>
        <source>The formula uses %1, which is not a parameter yet. Make %1 a parameter with %2?</source>
        <translation>The formula uses %1, which is not a parameter yet. Make %1 a parameter with %2?</translation>
    </message>
    <message>
        <source>The formula uses %1, which are not parameters yet. Make them parameters with %2?</source>
        <translation>The formula uses %1, which are not parameters yet. Make them parameters with %2?</translation>
    </message>
</context>
<context>
    <name>PointMarks</name>
    <message>
        <source>zero</source>
        <translation>zero</translation>
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
        <translation>inflection</translation>
    </message>
    <message>
        <source>intersection</source>
        <translation>intersection</translation>
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
        <translation>&amp;Save</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>Close without Saving</source>
        <translation>Close without Saving</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>P&amp;oints of interest</source>
        <translation>P&amp;oints of interest</translation>
    </message>
    <message>
        <source>Ta&amp;ble of values...</source>
        <translation>Ta&amp;ble of values...</translation>
    </message>
    <message>
        <source>&amp;Derivata</source>
        <translation>&amp;Derivative</translation>
    </message>
    <message>
        <source>&amp;Primitiv funktion</source>
        <translation>&amp;Primitive function</translation>
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
        <translation>Save</translation>
    </message>
    <message>
        <source>Save All</source>
        <translation>Save All</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Yes</translation>
    </message>
    <message>
        <source>Yes to &amp;All</source>
        <translation>Yes to &amp;All</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;No</translation>
    </message>
    <message>
        <source>N&amp;o to All</source>
        <translation>N&amp;o to All</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>Abort</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>Retry</translation>
    </message>
    <message>
        <source>Ignore</source>
        <translation>Ignore</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Discard</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Apply</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Reset</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>Restore Defaults</translation>
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
        <translation>&amp;New</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <comment>427</comment>
        <translation>&amp;Copy</translation>
    </message>
    <message>
        <source>Save &amp;As</source>
        <comment>428</comment>
        <translation>Save &amp;As</translation>
    </message>
    <message>
        <source>&amp;Print</source>
        <comment>429</comment>
        <translation>&amp;Print</translation>
    </message>
    <message>
        <source>&amp;Colors</source>
        <comment>431</comment>
        <translation>&amp;Colors</translation>
    </message>
    <message>
        <source>&amp;Grid</source>
        <comment>433</comment>
        <translation>&amp;Grid</translation>
    </message>
    <message>
        <source>&amp;Axis</source>
        <comment>434</comment>
        <translation>&amp;Axis</translation>
    </message>
    <message>
        <source>&amp;Function graph</source>
        <comment>435</comment>
        <translation>&amp;Function graph</translation>
    </message>
    <message>
        <source>only digits, - and </source>
        <comment>443</comment>
        <translation>only digits, - and </translation>
    </message>
    <message>
        <source>&amp;Degrees</source>
        <comment>452</comment>
        <translation>&amp;Degrees</translation>
    </message>
    <message>
        <source>Ra&amp;dians</source>
        <comment>453</comment>
        <translation>R&amp;adians</translation>
    </message>
    <message>
        <source>&amp;Gradient</source>
        <comment>454</comment>
        <translation>&amp;Gradians</translation>
    </message>
    <message>
        <source>Exact trigs&amp;cale</source>
        <comment>456</comment>
        <translation>Exact trig s&amp;cale</translation>
    </message>
    <message>
        <source>Axis</source>
        <comment>461</comment>
        <translation>Axis</translation>
    </message>
    <message>
        <source>0 for no ticks</source>
        <comment>465</comment>
        <translation>0 for no ticks</translation>
    </message>
    <message>
        <source>Please set size between min 5 and max 10</source>
        <comment>468</comment>
        <translation>Font size for the tick numbers</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <comment>469</comment>
        <translation>De&amp;lete</translation>
    </message>
    <message>
        <source>&amp;Fontsize for axis-ticks</source>
        <comment>470</comment>
        <translation>&amp;Font size for axis ticks</translation>
    </message>
    <message>
        <source>&amp;Decimal</source>
        <comment>472</comment>
        <translation>&amp;Decimal</translation>
    </message>
    <message>
        <source>&amp;Fractional</source>
        <comment>473</comment>
        <translation>&amp;Fractional</translation>
    </message>
    <message>
        <source>&amp;Change color</source>
        <comment>474</comment>
        <translation>&amp;Change color</translation>
    </message>
    <message>
        <source>&amp;Tangents</source>
        <comment>475</comment>
        <translation>&amp;Tangents</translation>
    </message>
    <message>
        <source>&amp;Fill</source>
        <comment>477</comment>
        <translation>&amp;Fill</translation>
    </message>
    <message>
        <source>&amp;Vertical lines</source>
        <comment>478</comment>
        <translation>&amp;Vertical lines</translation>
    </message>
    <message>
        <source>&amp;Fillcolor</source>
        <comment>479</comment>
        <translation>F&amp;ill colour</translation>
    </message>
    <message>
        <source>&amp;Horizontal lines</source>
        <comment>480</comment>
        <translation>&amp;Horizontal lines</translation>
    </message>
    <message>
        <source>Trace</source>
        <comment>484</comment>
        <translation>Trace</translation>
    </message>
    <message>
        <source>Primitive function</source>
        <comment>485</comment>
        <translation>Primitive function</translation>
    </message>
    <message>
        <source>Derivative</source>
        <comment>486</comment>
        <translation>Derivative</translation>
    </message>
    <message>
        <source>&amp;Window background</source>
        <comment>488</comment>
        <translation>&amp;Window background</translation>
    </message>
    <message>
        <source>Stepwise</source>
        <comment>489</comment>
        <translation>Stepwise</translation>
    </message>
    <message>
        <source>To beginning</source>
        <comment>490</comment>
        <translation>To beginning</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <comment>491</comment>
        <translation>Zoom in</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <comment>492</comment>
        <translation>Zoom out</translation>
    </message>
    <message>
        <source>Doubleclick to start zoom in</source>
        <comment>493</comment>
        <translation>Double-click to start zooming in</translation>
    </message>
    <message>
        <source>Save changes?</source>
        <comment>620</comment>
        <translation>Save changes?</translation>
    </message>
    <message>
        <source>Cancel</source>
        <comment>705</comment>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Draw</source>
        <comment>710</comment>
        <translation>Draw</translation>
    </message>
    <message>
        <source>Comma(,)</source>
        <comment>1001</comment>
        <translation>Comma (,)</translation>
    </message>
    <message>
        <source>Colon(:)</source>
        <comment>1002</comment>
        <translation>Colon (:)</translation>
    </message>
    <message>
        <source>Semicolon(;)</source>
        <comment>1003</comment>
        <translation>Semicolon (;)</translation>
    </message>
    <message>
        <source>Vertical bar(|)</source>
        <comment>1004</comment>
        <translation>Vertical bar (|)</translation>
    </message>
    <message>
        <source>Coordinate system settings</source>
        <comment>1005</comment>
        <translation>Coordinate system settings</translation>
    </message>
    <message>
        <source>Coordinate separator</source>
        <comment>1006</comment>
        <translation>Coordinate separator</translation>
    </message>
    <message>
        <source>Axis arrows</source>
        <comment>1007</comment>
        <translation>Axis arrows</translation>
    </message>
    <message>
        <source>Fi&amp;le</source>
        <comment>2000</comment>
        <translation>Fi&amp;le</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <comment>2001</comment>
        <translation>E&amp;xit</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <comment>2002</comment>
        <translation>&amp;Edit</translation>
    </message>
    <message>
        <source>&amp;Zoom</source>
        <comment>2003</comment>
        <translation>&amp;Zoom</translation>
    </message>
    <message>
        <source>T&amp;ools</source>
        <comment>2004</comment>
        <translation>T&amp;ools</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <comment>2005</comment>
        <translation>&amp;Settings</translation>
    </message>
    <message>
        <source>&amp;Koordinatsystem</source>
        <comment>2006</comment>
        <translation>Coordinate &amp;system</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <comment>2007</comment>
        <translation>&amp;Help</translation>
    </message>
    <message>
        <source>&amp;Contents</source>
        <comment>2008</comment>
        <translation>&amp;Contents</translation>
    </message>
    <message>
        <source>&amp;Search for Help On...</source>
        <comment>2009</comment>
        <translation>&amp;Search for Help On...</translation>
    </message>
    <message>
        <source>&amp;About Curvix</source>
        <comment>2010</comment>
        <translation>&amp;About Curvix</translation>
    </message>
    <message>
        <source>OK</source>
        <comment>2011</comment>
        <translation>OK</translation>
    </message>
    <message>
        <source>Function</source>
        <comment>2012</comment>
        <translation>Function</translation>
    </message>
    <message>
        <source>x: min, max, step, ticks</source>
        <comment>2013</comment>
        <translation>x: min, max, step, ticks</translation>
    </message>
    <message>
        <source>y: min, max, step, ticks</source>
        <comment>2014</comment>
        <translation>y: min, max, step, ticks</translation>
    </message>
    <message>
        <source>Angle unit</source>
        <comment>2015</comment>
        <translation>Angle unit</translation>
    </message>
    <message>
        <source>Overflow</source>
        <comment>2016</comment>
        <translation>Overflow</translation>
    </message>
    <message>
        <source>The function label, e.g. f(x): the letter in parentheses is the variable</source>
        <comment>2017</comment>
        <translation>The function label, e.g. f(x): the letter in parentheses is the variable</translation>
    </message>
    <message>
        <source>Type a function of one variable and press Enter or Draw</source>
        <comment>2018</comment>
        <translation>Type a function of one variable and press Enter or Draw</translation>
    </message>
    <message>
        <source>Axes</source>
        <comment>2019</comment>
        <translation>Axes</translation>
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
        <translation>Step</translation>
    </message>
    <message>
        <source>Ticks</source>
        <comment>2023</comment>
        <translation>Ticks</translation>
    </message>
    <message>
        <source>Arrows at the axis ends</source>
        <comment>2024</comment>
        <translation>Arrows at the axis ends</translation>
    </message>
    <message>
        <source>Numbers at the ticks</source>
        <comment>2025</comment>
        <translation>Numbers at the ticks</translation>
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
        <translation>&quot;%1&quot; is not a number (%2); the last good view is kept</translation>
    </message>
    <message>
        <source>The %1 must be below the %2; the last good view is kept</source>
        <comment>2033</comment>
        <translation>The %1 must be below the %2; the last good view is kept</translation>
    </message>
    <message>
        <source>The %1 must not be below 0, and must be above 0 while ticks are on; the last good view is kept</source>
        <comment>2034</comment>
        <translation>The %1 must not be below 0, and must be above 0 while ticks are on; the last good view is kept</translation>
    </message>
    <message>
        <source>Text</source>
        <comment>2026</comment>
        <translation>Text</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no label: write a name and its variable, such as f(x), or one small letter</source>
        <comment>2027</comment>
        <translation>&quot;%1&quot; is no label: write a name and its variable, such as f(x), or one small letter</translation>
    </message>
    <message>
        <source>A number, or a multiple of π such as 2p</source>
        <comment>2040</comment>
        <translation>A number, or a multiple of π such as 2p</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <comment>2041</comment>
        <translation>&amp;Add</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <comment>2042</comment>
        <translation>&amp;Remove</translation>
    </message>
    <message>
        <source>Remove a&amp;ll</source>
        <comment>2043</comment>
        <translation>Remove a&amp;ll</translation>
    </message>
    <message>
        <source>Close</source>
        <comment>2044</comment>
        <translation>Close</translation>
    </message>
    <message>
        <source>(min 5,  max 10)</source>
        <comment>2045</comment>
        <translation> (5 to 10):</translation>
    </message>
    <message>
        <source>The clipboard cannot be reached.</source>
        <comment>2050</comment>
        <translation>The clipboard cannot be reached.</translation>
    </message>
    <message>
        <source>The printer could not be started.</source>
        <comment>2051</comment>
        <translation>The printer could not be started.</translation>
    </message>
    <message>
        <source>About Curvix</source>
        <comment>3000</comment>
        <translation>About Curvix</translation>
    </message>
    <message>
        <source>Function graphs for school mathematics</source>
        <comment>3001</comment>
        <translation>Function graphs for school mathematics</translation>
    </message>
    <message>
        <source>Copyright © 2026 The Curvix developers
Curvix is free software: you may share and change it under the terms of the GNU General Public License, version 3 or (at your option) any later version (GPL-3.0-or-later).
Curvix comes with ABSOLUTELY NO WARRANTY, to the extent permitted by law.</source>
        <comment>3002</comment>
        <translation>Copyright © 2026 The Curvix developers
Curvix is free software: you may share and change it under the terms of the GNU General Public License, version 3 or (at your option) any later version (GPL-3.0-or-later).
Curvix comes with ABSOLUTELY NO WARRANTY, to the extent permitted by law.</translation>
    </message>
    <message>
        <source>SYMBOLIC.DLL (derivatives and primitive functions): Giac, the computer-algebra library by Bernard Parisse, free software under GPL-3.0-or-later.</source>
        <comment>3003</comment>
        <translation>SYMBOLIC.DLL (derivatives and primitive functions): Giac, the computer-algebra library by Bernard Parisse, free software under GPL-3.0-or-later.</translation>
    </message>
    <message>
        <source>&amp;System Info...</source>
        <comment>3004</comment>
        <translation>&amp;System Info...</translation>
    </message>
    <message>
        <source>Curvix Help</source>
        <comment>3005</comment>
        <translation>Curvix Help</translation>
    </message>
    <message>
        <source>Contents</source>
        <comment>3006</comment>
        <translation>Contents</translation>
    </message>
    <message>
        <source>Search</source>
        <comment>3007</comment>
        <translation>Search</translation>
    </message>
    <message>
        <source>Type words to find, e.g. tangent</source>
        <comment>3008</comment>
        <translation>Type words to find, e.g. tangent</translation>
    </message>
    <message>
        <source>Back</source>
        <comment>3009</comment>
        <translation>Back</translation>
    </message>
    <message>
        <source>Forward</source>
        <comment>3010</comment>
        <translation>Forward</translation>
    </message>
    <message>
        <source>Start page</source>
        <comment>3011</comment>
        <translation>Start page</translation>
    </message>
    <message>
        <source>No topic contains all of these words.</source>
        <comment>3012</comment>
        <translation>No topic contains all of these words.</translation>
    </message>
    <message>
        <source>Topics with all the words: %1</source>
        <comment>3013</comment>
        <translation>Topics with all the words: %1</translation>
    </message>
    <message>
        <source>Ingen aktiv funktion</source>
        <comment>2090</comment>
        <translation>No active function</translation>
    </message>
    <message>
        <source>Endast en variabel per omgång</source>
        <comment>2091</comment>
        <translation>Only one variable at a time: start a New drawing or delete the functions that use another letter</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <comment>2092</comment>
        <translation>&amp;Language</translation>
    </message>
    <message>
        <source>&amp;System language</source>
        <comment>2093</comment>
        <translation>&amp;System language</translation>
    </message>
    <message>
        <source>The new language takes effect when Curvix starts next time.</source>
        <comment>2094</comment>
        <translation>The new language takes effect when Curvix starts next time.</translation>
    </message>
    <message>
        <source>The %1 and %2 are too close together for numbers that large; the last good view is kept</source>
        <comment>2035</comment>
        <translation>The %1 and %2 are too close together for numbers that large; the last good view is kept</translation>
    </message>
    <message>
        <source>Remove &amp;tangents</source>
        <comment>2060</comment>
        <translation>&amp;Remove tangents</translation>
    </message>
    <message>
        <source>Play the trace</source>
        <comment>2061</comment>
        <translation>Play the trace</translation>
    </message>
    <message>
        <source>Pause the trace</source>
        <comment>2062</comment>
        <translation>Pause the trace</translation>
    </message>
    <message>
        <source>One step of the trace (or the arrow keys)</source>
        <comment>2063</comment>
        <translation>One step of the trace (or the arrow keys)</translation>
    </message>
    <message>
        <source>Click on the plot to put a tangent on the nearest curve there</source>
        <comment>2064</comment>
        <translation>Click on the plot to put a tangent on the nearest curve there</translation>
    </message>
    <message>
        <source>The formula of the formula picture</source>
        <comment>2070</comment>
        <translation>The formula of the formula picture</translation>
    </message>
    <message>
        <source>This formula cannot be written out; the picture stays as it was.</source>
        <comment>2071</comment>
        <translation>This formula cannot be written out; the picture stays as it was.</translation>
    </message>
    <message>
        <source>A label: drag selected text onto the plot</source>
        <comment>2072</comment>
        <translation>A label: drag selected text onto the plot</translation>
    </message>
    <message>
        <source>The function as a picture: drag it onto the plot (Alt+Q edits it)</source>
        <comment>2073</comment>
        <translation>The function as a picture: drag it onto the plot (Alt+Q edits it)</translation>
    </message>
    <message>
        <source>Derivative and tangent</source>
        <comment>4000</comment>
        <translation>Derivative and tangent</translation>
    </message>
    <message>
        <source>x from</source>
        <comment>4001</comment>
        <translation>x from</translation>
    </message>
    <message>
        <source>x to</source>
        <comment>4002</comment>
        <translation>x to</translation>
    </message>
    <message>
        <source>Step length</source>
        <comment>4003</comment>
        <translation>Step length</translation>
    </message>
    <message>
        <source>Draw the &amp;derivative&apos;s graph</source>
        <comment>4004</comment>
        <translation>Draw the &amp;derivative&apos;s graph</translation>
    </message>
    <message>
        <source>&amp;Start</source>
        <comment>4005</comment>
        <translation>&amp;Start</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <comment>4006</comment>
        <translation>Pa&amp;use</translation>
    </message>
    <message>
        <source>S&amp;tep</source>
        <comment>4007</comment>
        <translation>S&amp;tep</translation>
    </message>
    <message>
        <source>St&amp;op</source>
        <comment>4008</comment>
        <translation>Sto&amp;p</translation>
    </message>
    <message>
        <source>&amp;Sort</source>
        <comment>4009</comment>
        <translation>S&amp;ort</translation>
    </message>
    <message>
        <source>OK</source>
        <comment>4010</comment>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <comment>4011</comment>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>x coordinates (used instead of the range when the list has values)</source>
        <comment>4012</comment>
        <translation>x coordinates (used instead of the range when the list has values)</translation>
    </message>
    <message>
        <source>Vertical lines x =</source>
        <comment>4013</comment>
        <translation>Vertical lines x =</translation>
    </message>
    <message>
        <source>Horizontal lines y =</source>
        <comment>4014</comment>
        <translation>Horizontal lines y =</translation>
    </message>
    <message>
        <source>The tangent along the curve of the function</source>
        <comment>4015</comment>
        <translation>The tangent along the curve of the function</translation>
    </message>
    <message>
        <source>Write a number (or a multiple of π such as 2p) in x from, x to and step length.</source>
        <comment>4020</comment>
        <translation>Write a number (or a multiple of π such as 2p) in x from, x to and step length.</translation>
    </message>
    <message>
        <source>x from must be less than x to.</source>
        <comment>4021</comment>
        <translation>x from must be less than x to.</translation>
    </message>
    <message>
        <source>The step length must be greater than 0.</source>
        <comment>4022</comment>
        <translation>The step length must be greater than 0.</translation>
    </message>
    <message>
        <source>That is more than %1 steps: choose a longer step length or a shorter range.</source>
        <comment>4023</comment>
        <translation>That is more than %1 steps: choose a longer step length or a shorter range.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number. Write a number, or a multiple of π such as 2p.</source>
        <comment>4024</comment>
        <translation>&quot;%1&quot; is not a number. Write a number, or a multiple of π such as 2p.</translation>
    </message>
    <message>
        <source>The list of functions is full.</source>
        <comment>4025</comment>
        <translation>The list of functions is full.</translation>
    </message>
    <message>
        <source>Derivative and tangent demonstration</source>
        <comment>4026</comment>
        <translation>Derivative and tangent demonstration</translation>
    </message>
    <message>
        <source>zero</source>
        <comment>5000</comment>
        <translation>zero</translation>
    </message>
    <message>
        <source>one</source>
        <comment>5001</comment>
        <translation>one</translation>
    </message>
    <message>
        <source>two</source>
        <comment>5002</comment>
        <translation>two</translation>
    </message>
    <message>
        <source>three</source>
        <comment>5003</comment>
        <translation>three</translation>
    </message>
    <message>
        <source>four</source>
        <comment>5004</comment>
        <translation>four</translation>
    </message>
    <message>
        <source>five</source>
        <comment>5005</comment>
        <translation>five</translation>
    </message>
    <message>
        <source>six</source>
        <comment>5006</comment>
        <translation>six</translation>
    </message>
    <message>
        <source>seven</source>
        <comment>5007</comment>
        <translation>seven</translation>
    </message>
    <message>
        <source>eight</source>
        <comment>5008</comment>
        <translation>eight</translation>
    </message>
    <message>
        <source>nine</source>
        <comment>5009</comment>
        <translation>nine</translation>
    </message>
    <message>
        <source>decimal point</source>
        <comment>5010</comment>
        <translation>decimal point</translation>
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
        <translation>times</translation>
    </message>
    <message>
        <source>divided by</source>
        <comment>5014</comment>
        <translation>divided by</translation>
    </message>
    <message>
        <source>power</source>
        <comment>5015</comment>
        <translation>power</translation>
    </message>
    <message>
        <source>pi</source>
        <comment>5016</comment>
        <translation>pi</translation>
    </message>
    <message>
        <source>Euler&apos;s number e</source>
        <comment>5017</comment>
        <translation>Euler&apos;s number e</translation>
    </message>
    <message>
        <source>left parenthesis</source>
        <comment>5018</comment>
        <translation>left parenthesis</translation>
    </message>
    <message>
        <source>right parenthesis</source>
        <comment>5019</comment>
        <translation>right parenthesis</translation>
    </message>
    <message>
        <source>square root</source>
        <comment>5020</comment>
        <translation>square root</translation>
    </message>
    <message>
        <source>sine</source>
        <comment>5021</comment>
        <translation>sine</translation>
    </message>
    <message>
        <source>cosine</source>
        <comment>5022</comment>
        <translation>cosine</translation>
    </message>
    <message>
        <source>tangent</source>
        <comment>5023</comment>
        <translation>tangent</translation>
    </message>
    <message>
        <source>arc sine</source>
        <comment>5024</comment>
        <translation>arc sine</translation>
    </message>
    <message>
        <source>arc cosine</source>
        <comment>5025</comment>
        <translation>arc cosine</translation>
    </message>
    <message>
        <source>arc tangent</source>
        <comment>5026</comment>
        <translation>arc tangent</translation>
    </message>
    <message>
        <source>exponential function</source>
        <comment>5027</comment>
        <translation>exponential function</translation>
    </message>
    <message>
        <source>natural logarithm</source>
        <comment>5028</comment>
        <translation>natural logarithm</translation>
    </message>
    <message>
        <source>logarithm base 10</source>
        <comment>5029</comment>
        <translation>logarithm base 10</translation>
    </message>
    <message>
        <source>the variable</source>
        <comment>5030</comment>
        <translation>the variable</translation>
    </message>
    <message>
        <source>clear</source>
        <comment>5031</comment>
        <translation>clear</translation>
    </message>
    <message>
        <source>Function label</source>
        <comment>5040</comment>
        <translation>Function label</translation>
    </message>
    <message>
        <source>Function</source>
        <comment>5041</comment>
        <translation>Function</translation>
    </message>
    <message>
        <source>Draw the function in the function box</source>
        <comment>5042</comment>
        <translation>Draw the function in the function box</translation>
    </message>
    <message>
        <source>x minimum</source>
        <comment>5043</comment>
        <translation>x minimum</translation>
    </message>
    <message>
        <source>x maximum</source>
        <comment>5044</comment>
        <translation>x maximum</translation>
    </message>
    <message>
        <source>x step</source>
        <comment>5045</comment>
        <translation>x step</translation>
    </message>
    <message>
        <source>x ticks</source>
        <comment>5046</comment>
        <translation>x ticks</translation>
    </message>
    <message>
        <source>y minimum</source>
        <comment>5047</comment>
        <translation>y minimum</translation>
    </message>
    <message>
        <source>y maximum</source>
        <comment>5048</comment>
        <translation>y maximum</translation>
    </message>
    <message>
        <source>y step</source>
        <comment>5049</comment>
        <translation>y step</translation>
    </message>
    <message>
        <source>y ticks</source>
        <comment>5050</comment>
        <translation>y ticks</translation>
    </message>
    <message>
        <source>The smallest value shown (p stands for π)</source>
        <comment>5051</comment>
        <translation>The smallest value shown (p stands for π)</translation>
    </message>
    <message>
        <source>The largest value shown (p stands for π)</source>
        <comment>5052</comment>
        <translation>The largest value shown (p stands for π)</translation>
    </message>
    <message>
        <source>The distance between grid lines</source>
        <comment>5053</comment>
        <translation>The distance between grid lines</translation>
    </message>
    <message>
        <source>%1 in whole and fractional multiples of π</source>
        <comment>5054</comment>
        <translation>%1 in whole and fractional multiples of π</translation>
    </message>
    <message>
        <source>A whole multiple of π and a fraction of π</source>
        <comment>5055</comment>
        <translation>A whole multiple of π and a fraction of π</translation>
    </message>
    <message>
        <source>Angles in degrees</source>
        <comment>5056</comment>
        <translation>Angles in degrees</translation>
    </message>
    <message>
        <source>Angles in radians</source>
        <comment>5057</comment>
        <translation>Angles in radians</translation>
    </message>
    <message>
        <source>Angles in gradians</source>
        <comment>5058</comment>
        <translation>Angles in gradians</translation>
    </message>
    <message>
        <source>Tick labels at multiples of π, as decimals or fractions</source>
        <comment>5059</comment>
        <translation>Tick labels at multiples of π, as decimals or fractions</translation>
    </message>
    <message>
        <source>Show the grid</source>
        <comment>5060</comment>
        <translation>Show the grid</translation>
    </message>
    <message>
        <source>Label text</source>
        <comment>5061</comment>
        <translation>Label text</translation>
    </message>
    <message>
        <source>Formula picture</source>
        <comment>5062</comment>
        <translation>Formula picture</translation>
    </message>
    <message>
        <source>Plot area</source>
        <comment>5063</comment>
        <translation>Plot area</translation>
    </message>
    <message>
        <source>Right-click for the tools, double-click a curve for a point label, turn the wheel to zoom</source>
        <comment>5064</comment>
        <translation>Right-click for the tools, double-click a curve for a point label, turn the wheel to zoom</translation>
    </message>
    <message>
        <source>Resize the plot</source>
        <comment>5065</comment>
        <translation>Resize the plot</translation>
    </message>
    <message>
        <source>Status, part %1</source>
        <comment>5066</comment>
        <translation>Status, part %1</translation>
    </message>
    <message>
        <source>Keypad: %1</source>
        <comment>5067</comment>
        <translation>Keypad: %1</translation>
    </message>
    <message>
        <source>Tr&amp;ace</source>
        <comment>5070</comment>
        <translation>Tr&amp;ace</translation>
    </message>
    <message>
        <source>De&amp;rivative</source>
        <comment>5071</comment>
        <translation>De&amp;rivative</translation>
    </message>
    <message>
        <source>&amp;Primitive function</source>
        <comment>5072</comment>
        <translation>&amp;Primitive function</translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <comment>5073</comment>
        <translation>Zoom &amp;in</translation>
    </message>
    <message>
        <source>Zoom &amp;out</source>
        <comment>5074</comment>
        <translation>Zoom &amp;out</translation>
    </message>
    <message>
        <source>&amp;Stepwise</source>
        <comment>5075</comment>
        <translation>&amp;Stepwise</translation>
    </message>
    <message>
        <source>To &amp;beginning</source>
        <comment>5076</comment>
        <translation>To &amp;beginning</translation>
    </message>
    <message>
        <source>&amp;Equal scale</source>
        <comment>5085</comment>
        <translation>&amp;Equal scale</translation>
    </message>
    <message>
        <source>Derivative and ta&amp;ngent</source>
        <comment>5077</comment>
        <translation>Derivative and ta&amp;ngent</translation>
    </message>
    <message>
        <source>The settings could not be saved: %1 cannot be written.</source>
        <comment>5090</comment>
        <translation>The settings could not be saved: %1 cannot be written.</translation>
    </message>
    <message>
        <source>The settings could not be saved: %1 is not a settings file.</source>
        <comment>5091</comment>
        <translation>The settings could not be saved: %1 is not a settings file.</translation>
    </message>
    <message>
        <source>A &amp;new colour for each function</source>
        <comment>5140</comment>
        <translation>A &amp;new colour for each function</translation>
    </message>
    <message>
        <source>Change c&amp;olour…</source>
        <comment>5141</comment>
        <translation>&amp;Change colour…</translation>
    </message>
    <message>
        <source>Smoot&amp;h curves</source>
        <comment>5142</comment>
        <translation>Smoot&amp;h curves</translation>
    </message>
    <message>
        <source>%1 is drawn already.</source>
        <comment>5143</comment>
        <translation>%1 is drawn already.</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <comment>5144</comment>
        <translation>&amp;Replace</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <comment>5145</comment>
        <translation>&amp;Edit</translation>
    </message>
    <message>
        <source>Editing %1: Enter replaces it, Esc leaves it as it was.</source>
        <comment>5146</comment>
        <translation>Editing %1: Enter replaces it, Esc leaves it as it was.</translation>
    </message>
    <message>
        <source>Editing:</source>
        <comment>5147</comment>
        <translation>Editing:</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <comment>5150</comment>
        <translation>&amp;Open…</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <comment>5151</comment>
        <translation>Open &amp;Recent</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <comment>5152</comment>
        <translation>&amp;Save</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <comment>5153</comment>
        <translation>&amp;Undo</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <comment>5154</comment>
        <translation>&amp;Redo</translation>
    </message>
    <message>
        <source>Curvix drawing (*.curvix)</source>
        <comment>5155</comment>
        <translation>Curvix drawing (*.curvix)</translation>
    </message>
    <message>
        <source>Curvix was not closed properly last time. Restore the drawing it was working on?</source>
        <comment>5156</comment>
        <translation>Curvix was not closed properly last time. Restore the drawing it was working on?</translation>
    </message>
    <message>
        <source>Open Drawing</source>
        <comment>5157</comment>
        <translation>Open Drawing</translation>
    </message>
    <message>
        <source>%1 is not there any more.</source>
        <comment>5158</comment>
        <translation>%1 is not there any more.</translation>
    </message>
    <message>
        <source>Clear the list</source>
        <comment>5159</comment>
        <translation>Clear the list</translation>
    </message>
    <message>
        <source>The recovery file %1 could not be read: %2</source>
        <comment>5160</comment>
        <translation>The recovery file %1 could not be read: %2</translation>
    </message>
    <message>
        <source>Calculating… (Esc cancels)</source>
        <comment>5078</comment>
        <translation>Calculating… (Esc cancels)</translation>
    </message>
    <message>
        <source>x of the trace: type a value and press Enter</source>
        <comment>5180</comment>
        <translation>x of the trace: type a value and press Enter</translation>
    </message>
    <message>
        <source>not defined at x = %1</source>
        <comment>5181</comment>
        <translation>not defined at x = %1</translation>
    </message>
    <message>
        <source>vertical tangent at x = %1</source>
        <comment>5182</comment>
        <translation>vertical tangent at x = %1</translation>
    </message>
    <message>
        <source>Remove this tangent</source>
        <comment>5183</comment>
        <translation>Remove this tangent</translation>
    </message>
    <message>
        <source>Steps per second</source>
        <comment>5184</comment>
        <translation>Steps per second</translation>
    </message>
    <message>
        <source>tangent</source>
        <comment>5185</comment>
        <translation>tangent</translation>
    </message>
    <message>
        <source>x = %1 is outside the view</source>
        <comment>5186</comment>
        <translation>x = %1 is outside the view</translation>
    </message>
    <message>
        <source>Print Pre&amp;view</source>
        <comment>2100</comment>
        <translation>Print Pre&amp;view</translation>
    </message>
    <message>
        <source>%1 cannot be saved: Curvix writes only these types: %2</source>
        <comment>2095</comment>
        <translation>%1 cannot be saved: Curvix writes only these types: %2</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <comment>2096</comment>
        <translation>%1 already exists.
Do you want to replace it?</translation>
    </message>
    <message>
        <source>Could not save %1: %2</source>
        <comment>2097</comment>
        <translation>Could not save %1: %2</translation>
    </message>
    <message>
        <source>Expor&amp;t…</source>
        <comment>2098</comment>
        <translation>Expor&amp;t…</translation>
    </message>
    <message>
        <source>graph</source>
        <comment>2099</comment>
        <translation>graph</translation>
    </message>
    <message>
        <source>Export</source>
        <comment>2110</comment>
        <translation>Export</translation>
    </message>
    <message>
        <source>Size in:</source>
        <comment>2111</comment>
        <translation>Size in:</translation>
    </message>
    <message>
        <source>pixels</source>
        <comment>2112</comment>
        <translation>pixels</translation>
    </message>
    <message>
        <source>centimetres</source>
        <comment>2113</comment>
        <translation>centimetres</translation>
    </message>
    <message>
        <source>Width:</source>
        <comment>2114</comment>
        <translation>Width:</translation>
    </message>
    <message>
        <source>Height:</source>
        <comment>2115</comment>
        <translation>Height:</translation>
    </message>
    <message>
        <source>Resolution:</source>
        <comment>2116</comment>
        <translation>Resolution:</translation>
    </message>
    <message>
        <source>Transparent background (PNG and SVG)</source>
        <comment>2118</comment>
        <translation>Transparent background (PNG and SVG)</translation>
    </message>
    <message>
        <source>Line width:</source>
        <comment>2119</comment>
        <translation>Line width:</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <comment>2120</comment>
        <translation>%1 × %2 pixels</translation>
    </message>
    <message>
        <source>Too large: at most %1 pixels a side</source>
        <comment>2121</comment>
        <translation>Too large: at most %1 pixels a side</translation>
    </message>
</context>
<context>
    <name>SymbolicText</name>
    <message>
        <source>Error in derivative calculation</source>
        <translation>Error in derivative calculation</translation>
    </message>
    <message>
        <source>Error in calculation of primitive function</source>
        <translation>Error in calculation of primitive function</translation>
    </message>
    <message>
        <source>Error in primitive calculation</source>
        <translation>Error in primitive calculation</translation>
    </message>
</context>
<context>
    <name>ValueTable</name>
    <message>
        <source>&apos;%1&apos; is not a number</source>
        <translation>&apos;%1&apos; is not a number</translation>
    </message>
    <message>
        <source>the step must not be 0</source>
        <translation>the step must not be 0</translation>
    </message>
    <message>
        <source>more than %1 rows</source>
        <translation>more than %1 rows</translation>
    </message>
</context>
<context>
    <name>curvix::app::AreaTools</name>
    <message>
        <source>&amp;Area…</source>
        <translation>&amp;Area…</translation>
    </message>
    <message>
        <source>Remove area&amp;s</source>
        <translation>Remove area&amp;s</translation>
    </message>
</context>
<context>
    <name>curvix::app::CurveTools</name>
    <message>
        <source>TRACE</source>
        <translation>TRACE</translation>
    </message>
</context>
<context>
    <name>curvix::app::Demonstration</name>
    <message>
        <source>Derivata/tangent</source>
        <translation>Derivative/tangent</translation>
    </message>
</context>
<context>
    <name>curvix::app::FractionInput</name>
    <message>
        <source>%1, whole multiple of π</source>
        <translation>%1, whole multiple of π</translation>
    </message>
    <message>
        <source>%1, numerator</source>
        <translation>%1, numerator</translation>
    </message>
    <message>
        <source>%1, denominator</source>
        <translation>%1, denominator</translation>
    </message>
</context>
<context>
    <name>curvix::app::ParameterActions</name>
    <message>
        <source>Parameters</source>
        <translation>Parameters</translation>
    </message>
    <message>
        <source>Para&amp;meters</source>
        <translation>Para&amp;meters</translation>
    </message>
</context>
<context>
    <name>curvix::app::ParameterDialog</name>
    <message>
        <source>Add a parameter</source>
        <translation>Add a parameter</translation>
    </message>
    <message>
        <source>Parameter %1</source>
        <translation>Parameter %1</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>&amp;Value:</source>
        <translation>&amp;Value:</translation>
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
        <translation>&amp;Step:</translation>
    </message>
    <message>
        <source>The name must be one small letter, such as a.</source>
        <translation>The name must be one small letter, such as a.</translation>
    </message>
    <message>
        <source>The name cannot be e: e is Euler&apos;s number.</source>
        <translation>The name cannot be e: e is Euler&apos;s number.</translation>
    </message>
    <message>
        <source>The name cannot be %1: it is the drawing&apos;s variable.</source>
        <translation>The name cannot be %1: it is the drawing&apos;s variable.</translation>
    </message>
    <message>
        <source>There is already a parameter %1.</source>
        <translation>There is already a parameter %1.</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Value</translation>
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
        <translation>Step</translation>
    </message>
    <message>
        <source>The %1 box needs a number, such as 2, %2 or 2π.</source>
        <translation>The %1 box needs a number, such as 2, %2 or 2π.</translation>
    </message>
    <message>
        <source>The minimum must be below the maximum.</source>
        <translation>The minimum must be below the maximum.</translation>
    </message>
    <message>
        <source>The step must be above 0.</source>
        <translation>The step must be above 0.</translation>
    </message>
    <message>
        <source>The value must lie between the minimum and the maximum.</source>
        <translation>The value must lie between the minimum and the maximum.</translation>
    </message>
</context>
<context>
    <name>curvix::app::ParameterPanel</name>
    <message>
        <source>No parameters. Type a formula with a letter such as a, or press Add.</source>
        <translation>No parameters. Type a formula with a letter such as a, or press Add.</translation>
    </message>
    <message>
        <source>&amp;Add...</source>
        <translation>&amp;Add...</translation>
    </message>
    <message>
        <source>Add a parameter</source>
        <translation>Add a parameter</translation>
    </message>
    <message>
        <source>Value of %1</source>
        <translation>Value of %1</translation>
    </message>
    <message>
        <source>Slider for %1</source>
        <translation>Slider for %1</translation>
    </message>
    <message>
        <source>Play %1</source>
        <translation>Play %1</translation>
    </message>
    <message>
        <source>Sweep %1 between its bounds and back</source>
        <translation>Sweep %1 between its bounds and back</translation>
    </message>
    <message>
        <source>Edit %1</source>
        <translation>Edit %1</translation>
    </message>
    <message>
        <source>Value, bounds and step of %1</source>
        <translation>Value, bounds and step of %1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>Remove %1</translation>
    </message>
    <message>
        <source>From %1 to %2 in steps of %3</source>
        <translation>From %1 to %2 in steps of %3</translation>
    </message>
    <message>
        <source>Stop %1</source>
        <translation>Stop %1</translation>
    </message>
</context>
<context>
    <name>curvix::app::PlotView</name>
    <message>
        <source>Ctrl with the arrow keys pans, Page Up and Page Down zoom, the menu key opens the tools; with the trace on, the arrow keys move it and Enter puts a point label, or a tangent in tangent mode, where it stands</source>
        <translation>Ctrl with the arrow keys pans, Page Up and Page Down zoom, the menu key opens the tools; with the trace on, the arrow keys move it and Enter puts a point label, or a tangent in tangent mode, where it stands</translation>
    </message>
</context>
<context>
    <name>curvix::app::RangePanel</name>
    <message>
        <source>Rutnät</source>
        <translation>Grid</translation>
    </message>
</context>
<context>
    <name>curvix::app::StatusPanels</name>
    <message>
        <source>Pointer position and messages</source>
        <translation>Pointer position and messages</translation>
    </message>
    <message>
        <source>Traced function</source>
        <translation>Traced function</translation>
    </message>
    <message>
        <source>Demonstrated function</source>
        <translation>Demonstrated function</translation>
    </message>
    <message>
        <source>Trace x</source>
        <translation>Trace x</translation>
    </message>
    <message>
        <source>Demonstration x</source>
        <translation>Demonstration x</translation>
    </message>
    <message>
        <source>Trace y</source>
        <translation>Trace y</translation>
    </message>
    <message>
        <source>Demonstration curves</source>
        <translation>Demonstration curves</translation>
    </message>
    <message>
        <source>Trace slope</source>
        <translation>Trace slope</translation>
    </message>
    <message>
        <source>Demonstration slope</source>
        <translation>Demonstration slope</translation>
    </message>
</context>
<context>
    <name>curvix::app::ValueTableDialog</name>
    <message>
        <source>Table of values</source>
        <translation>Table of values</translation>
    </message>
    <message>
        <source>x from</source>
        <translation>x from</translation>
    </message>
    <message>
        <source>to</source>
        <translation>to</translation>
    </message>
    <message>
        <source>step</source>
        <translation>step</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copy</translation>
    </message>
    <message>
        <source>&amp;Save CSV...</source>
        <translation>&amp;Save CSV...</translation>
    </message>
    <message>
        <source>Save table</source>
        <translation>Save table</translation>
    </message>
    <message>
        <source>CSV files (*.csv)</source>
        <translation>CSV files (*.csv)</translation>
    </message>
    <message>
        <source>Could not save %1: %2</source>
        <translation>Could not save %1: %2</translation>
    </message>
</context>
<context>
    <name>curvix::app::ZoomBoxWidget</name>
    <message>
        <source>Dubbelklicka för att zooma in</source>
        <translation>Double-click or press Enter to zoom in</translation>
    </message>
    <message>
        <source>Zoom box</source>
        <translation>Zoom box</translation>
    </message>
    <message>
        <source>Arrow keys move it, Shift with the arrow keys resizes it, Enter zooms in, Esc closes it</source>
        <translation>Arrow keys move it, Shift with the arrow keys resizes it, Enter zooms in, Esc closes it</translation>
    </message>
</context>
<context>
    <name>curvix::app::frmAbout1</name>
    <message>
        <source>System Information Is Unavailable At This Time</source>
        <translation>System Information Is Unavailable At This Time</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
</context>
</TS>
