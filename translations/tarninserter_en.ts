<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>TARN::ChangedBanner</name>
    <message>
        <source>Netlist File has been changed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::ConfigCheck</name>
    <message>
        <source>Tarn %1: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>At least one Probe In port or Probe Out port should be enabled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No synchronization clock specified</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The output probe synchronizes with user clock does not exist</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Invalid user clock selected for output probe synchronization</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>tarn_%1-&gt;Probe Out%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ERROR:Signal &quot;%1&quot; has multiple drivers(%2)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::ConfigFile</name>
    <message>
        <source>It is no file. Choose a &quot;.tarn&quot; file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Can not read %1. %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::ConfigReader</name>
    <message>
        <source>The file is larger than %1 MB and is no configuration of this program.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The root element is &quot;%1&quot; instead of &quot;%2&quot;. Choose a file that this program has written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The first element is not &quot;%1&quot;. Add it, with the text &quot;%2&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file has the newer version &quot;%1&quot;; versions up to &quot;%2&quot; can be read. Use a newer release of this program.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file has the unknown version &quot;%1&quot; instead of &quot;%2&quot;. Correct it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Elements are nested deeper than %1 levels. Remove the inner ones.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The text &quot;%1&quot; stands between elements. Remove it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file has a document type declaration. Remove it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file declares the encoding &quot;%1&quot; instead of &quot;%2&quot;. Convert it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The element &quot;%1&quot; has no attribute &quot;%2&quot;. Add it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a whole number in digits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Line %1, column %2: %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An element has more than %1 attributes. Remove it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The text is not encoded in %1. Convert it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not well-formed XML: %1 Correct it, or take an earlier copy of the file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The element &quot;%1&quot; is not known in this place. Remove it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The attribute &quot;%1&quot; of the element &quot;%2&quot; is not known. Remove it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The attribute &quot;%1&quot; has the value &quot;%2&quot;. Allowed: %3.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::EditHistory</name>
    <message>
        <source>Add Core</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Cores</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove Core</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove Cores</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Ports</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove Port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove Ports</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change Signals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change Initial Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change User Clock</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reload File</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::Finding</name>
    <message>
        <source>The core has no port that holds a signal.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The port holds no signal.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The design has no net %1, the user clock.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The net %1 cannot be the user clock: it has no value in the hardware.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1; and %2 more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The net %1 has several drivers: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The port holds %1 twice.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The port holds %1 %2 times.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The initial value %1 does not fit: its width is %2, that of the port is %3.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>tarn_%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>tarn_%1, Probe Out%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>tarn_%1, Probe In%2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::Findings</name>
    <message>
        <source>Replace Signal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Replace Signals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take Over Buses</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::FindingsModel</name>
    <message>
        <source>Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Severity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Place</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Finding</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::FindingsPane</name>
    <message>
        <source>Findings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What does not fit the design. Press Return to go to the signal, or F8 for the next finding.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opens a menu of what the design has in place of the signal of the current finding.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Replace</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Replace All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All of %1 by %2 (%3 findings)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Changed buses by those of the design (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opens a menu of changes that mend several findings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Support 256 signals at most.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Next Finding</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Previous Finding</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::InitialValueLine</name>
    <message>
        <source>Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value &apos;%1&apos; for Probe Out%2 Initial Value exceeds the effective width.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::MessageDlg</name>
    <message>
        <source>Dialog</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::NewFileDialog</name>
    <message>
        <source>Select Directory</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please enter a name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please enter a path.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot make the path %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File %1 already exists.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Can not create file %1
%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New TARN Config File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enter a name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create in:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add to current project</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::ProbeDialog</name>
    <message>
        <source>MSB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Signals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LSB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Probe In Port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Probe Out Port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Support 256 signals at most.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::ProbePortsOptionWidget</name>
    <message>
        <source>Probe In%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Probe Out%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Probe In</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Probe Out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ports</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initial Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Output Probe Synchronizes with User Clock</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clock:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Support 64 Probe Ins at most.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Support 64 Probe Outs at most.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Support 1 Probe In at least.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Support 1 Probe Out at least.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::ReloadBanner</name>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;The file /home/somedir/some_file changed externaly.&lt;/p&gt;&lt;p&gt;Do you want to reload?&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reload</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file &apos;%1&apos; changed on disk.
Do you want to reload?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep It</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file &apos;%1&apos; has been removed on disk.
Do you still want to keep it?</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::SignalFit</name>
    <message>
        <source>The design has no net %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The design has no bus %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The bus %1 is %2 in the design now: %3.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 bit more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 bits more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 bit fewer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 bits fewer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>other bits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the same bits in reverse order</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The bus %1 has no bit %2 in the design now.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The bus %1 has its bits in another order in the design now.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The net %1 cannot be driven: the design drives it, or it is no wire.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The net %1 cannot be read: it has no value in the hardware.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The bit %1 cannot be driven: the design drives it, or it is no wire.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The bit %1 cannot be read: it has no value in the hardware.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 bits of the bus %2 cannot be driven: the design drives them, or they are no wires.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 bits of the bus %2 cannot be read: they have no value in the hardware.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::TarnFileWizardFactory</name>
    <message>
        <source>TARN Config File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create a TARN Config File.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::TarnOptionWidget</name>
    <message>
        <source>Probe Ports</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::TarnSignalSelectDialog</name>
    <message>
        <source>Search Nets</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Normal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wildcard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Regular Expression</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Case Sensitive</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Advanced Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Include Subentries</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search In</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hierarchy View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&gt;&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;&lt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The wildcard must match the whole path: *clk finds top/u_core/clk, clk does not.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The expression must match the whole path: .*clk finds top/u_core/clk, clk does not.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing found.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The expression is invalid.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The wildcard is invalid.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::TarnView</name>
    <message>
        <source>TARN Core</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 open file failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>For RTL Design, TARN is only available for OstraSynthesis. Please change Synthesis Tool to OstraSynthesis in Configurations.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>tarn_%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save changes to &quot;%1&quot; ?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reload Tarn</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Invalid TARN file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Design files are not exist.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Invalid Top Module</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No module named &quot;%1&quot;, please reset top module.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Multiple Top Module</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Multiple top, please set top module.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Design files contain some errors</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Get no module from design.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Get module &quot;%1&quot; failed, just received default module &quot;%2&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KX_JTAG used in design conflicts with TARN.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Design files contain some errors.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Design files changed. Do you want to reload?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Top module changed. Do you want to reload?</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::TarnViewManager</name>
    <message>
        <source>Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Save &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::UnsavedBanner</name>
    <message>
        <source>Restore</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Discard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There are unsaved changes to the file &apos;%1&apos; from %2. The file itself is newer.
Do you want to restore them?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There are unsaved changes to the file &apos;%1&apos; from %2.
Do you want to restore them?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There are unsaved changes to the file &apos;%1&apos; that can not be read. They are kept.
%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep It</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The unsaved changes to the file &apos;%1&apos; can be kept nowhere.
%2
Do you still want to keep it open?</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::UnsavedCopy</name>
    <message>
        <source>Restore Unsaved Changes</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::private_impl::TarnViewPrivate</name>
    <message>
        <source>Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Support 16 TARNs at most.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove TARN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The only TARN can not be removed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove TARn</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Do you want to remove TARN %1 ?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Can not save to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Your settings contain some errors.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
