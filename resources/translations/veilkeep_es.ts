<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>ADAlertManager</name>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>The item “%1” you want to unhide already exists. Do you want to replace or rename it to “%2”?</source>
        <translation>El elemento «%1» que quiere recuperar ya existe. ¿Quiere reemplazarlo o cambiarle el nombre a «%2»?</translation>
    </message>
    <message>
        <source>Some items cannot be unhidden.</source>
        <translation>No se pueden recuperar algunos elementos.</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Reemplazar</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Cambiar nombre</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>The item “%1” you want to hide is in the ‘Open Recent’ list of some applications. If you want to remove it from that list, please close the applications below before continuing.</source>
        <translation>El elemento «%1» que quiere ocultar está en la lista «Abrir reciente» de algunas aplicaciones. Si quiere quitarlo de ella, cierre las aplicaciones siguientes antes de continuar.</translation>
    </message>
    <message>
        <source>The item you want to hide is in the ‘Open Recent’ list.</source>
        <translation>El elemento que quiere ocultar está en la lista «Abrir reciente».</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Veilkeep can clean the &apos;Open Recent&apos; list of some applications and Finder. This will avoid finding your files in that list, but the hiding operation will take a bit longer. You can enable/disable this option in Veilkeep Preferences.</source>
        <translation>Veilkeep puede limpiar la lista «Abrir reciente» de algunas aplicaciones y del gestor de archivos. Así sus archivos no aparecerán en ella, pero ocultarlos tardará un poco más. Puede activar o desactivar esta opción en las preferencias de Veilkeep.</translation>
    </message>
    <message>
        <source>Would you like to enable this feature now?</source>
        <translation>¿Quiere activar esta función ahora?</translation>
    </message>
    <message>
        <source>Recent files list removal.</source>
        <translation>Limpieza de la lista de archivos recientes.</translation>
    </message>
    <message>
        <source>Remove Recents</source>
        <translation>Limpiar la lista</translation>
    </message>
    <message>
        <source>Don&apos;t Remove Recents</source>
        <translation>No limpiar la lista</translation>
    </message>
</context>
<context>
    <name>AboutWindow</name>
    <message>
        <source>About %1</source>
        <translation>Acerca de %1</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Versión %1</translation>
    </message>
    <message>
        <source>Hides files and folders from ordinary view and brings them back.</source>
        <translation>Oculta archivos y carpetas de la vista habitual y los recupera.</translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3. It comes with no warranty.</source>
        <translation>Software libre bajo la Licencia Pública General de GNU, versión 3. Se ofrece sin ninguna garantía.</translation>
    </message>
    <message>
        <source>Open the Guide</source>
        <translation>Abrir la guía</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
</context>
<context>
    <name>Alerts</name>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>ApplicationOnBus</name>
    <message>
        <source>Only the same user&apos;s programs may ask for this.</source>
        <translation>Solo los programas del mismo usuario pueden pedirlo.</translation>
    </message>
    <message>
        <source>Too many items in one request.</source>
        <translation>Demasiados elementos en una petición.</translation>
    </message>
    <message>
        <source>There is no action “%1”.</source>
        <translation>No hay ninguna acción «%1».</translation>
    </message>
    <message>
        <source>This action takes one list of URIs.</source>
        <translation>Esta acción espera una lista de URI.</translation>
    </message>
</context>
<context>
    <name>Asker</name>
    <message>
        <source>The item “%1” was not replaced, since its disk has no trash.</source>
        <translation>El elemento «%1» no se reemplazó, porque su disco no tiene papelera.</translation>
    </message>
    <message>
        <source>The item “%1” was not replaced, since another one took its place meanwhile.</source>
        <translation>El elemento «%1» no se reemplazó, porque entretanto otro ocupó su lugar.</translation>
    </message>
    <message>
        <source>The item “%1” was not replaced, since it could not be moved to the trash. %2</source>
        <translation>El elemento «%1» no se reemplazó, porque no se pudo mover a la papelera. %2</translation>
    </message>
    <message>
        <source>Some items cannot be unhidden.</source>
        <translation>No se pueden recuperar algunos elementos.</translation>
    </message>
</context>
<context>
    <name>BatchReport</name>
    <message>
        <source>what was done here may not survive a power cut: %1</source>
        <translation>puede que lo hecho aquí no sobreviva a un corte de corriente: %1</translation>
    </message>
    <message>
        <source>Item is not hidden.</source>
        <translation>El elemento no está oculto.</translation>
    </message>
    <message>
        <source>interrupted; items left as they are: %1</source>
        <translation>interrumpido; elementos que quedan como están: %1</translation>
    </message>
</context>
<context>
    <name>BrokenFiles</name>
    <message>
        <source>The file &quot;%1&quot; is located on a volume (network or a flash drive) and cannot be found.</source>
        <translation>El archivo «%1» está en un volumen (de red o una memoria USB) y no se puede encontrar.</translation>
    </message>
    <message>
        <source>Veilkeep can try to find it, but this can take some time. Would you like to locate it automatically?</source>
        <translation>Veilkeep puede intentar encontrarlo, pero puede tardar un poco. ¿Quiere localizarlo automáticamente?</translation>
    </message>
    <message>
        <source>Locate</source>
        <translation>Localizar</translation>
    </message>
    <message>
        <source>Ignore</source>
        <translation>Omitir</translation>
    </message>
    <message>
        <source>Searching for inconsistent files. Please wait...</source>
        <translation>Buscando archivos incoherentes. Espere…</translation>
    </message>
    <message>
        <source>Searching for missing items...</source>
        <translation>Buscando elementos que faltan…</translation>
    </message>
</context>
<context>
    <name>BusRequest</name>
    <message>
        <source>Too many items in one request.</source>
        <translation>Demasiados elementos en una petición.</translation>
    </message>
    <message>
        <source>A path in the request does not begin with &quot;/&quot;.</source>
        <translation>Una ruta de la petición no empieza por «/».</translation>
    </message>
    <message>
        <source>A path in the request has a NUL byte.</source>
        <translation>Una ruta de la petición contiene un byte NUL.</translation>
    </message>
    <message>
        <source>The paths in the request are too long together.</source>
        <translation>Las rutas de la petición son demasiado largas en conjunto.</translation>
    </message>
    <message>
        <source>The request names no command.</source>
        <translation>La petición no indica ninguna orden.</translation>
    </message>
    <message>
        <source>Too many options in one request.</source>
        <translation>Demasiadas opciones en una petición.</translation>
    </message>
    <message>
        <source>An option of the request is too long.</source>
        <translation>Una opción de la petición es demasiado larga.</translation>
    </message>
</context>
<context>
    <name>CallerPrompt</name>
    <message>
        <source>The password was not given.</source>
        <translation>No se introdujo la contraseña.</translation>
    </message>
</context>
<context>
    <name>DelayInhibitor</name>
    <message>
        <source>Items have to be hidden first</source>
        <translation>Antes hay que ocultar elementos</translation>
    </message>
</context>
<context>
    <name>ErrorText</name>
    <message>
        <source>Unknown error (%1)</source>
        <translation>Error desconocido (%1)</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Correcto</translation>
    </message>
    <message>
        <source>Unknown error</source>
        <translation>Error desconocido</translation>
    </message>
    <message>
        <source>Item not found.</source>
        <translation>No se encontró el elemento.</translation>
    </message>
    <message>
        <source>Not enough rights to perform operation.</source>
        <translation>No hay permisos suficientes para esta operación.</translation>
    </message>
    <message>
        <source>Item you requested is already hidden.</source>
        <translation>El elemento solicitado ya está oculto.</translation>
    </message>
    <message>
        <source>Can&apos;t create directory for storing hidden items.</source>
        <translation>No se puede crear la carpeta para los elementos ocultos.</translation>
    </message>
    <message>
        <source>Item with the same name already exists.</source>
        <translation>Ya existe un elemento con el mismo nombre.</translation>
    </message>
    <message>
        <source>User cancelled operation.</source>
        <translation>El usuario canceló la operación.</translation>
    </message>
    <message>
        <source>It is not allowed to hide these items to avoid serious system malfunctions.</source>
        <translation>No se permite ocultar estos elementos, para evitar fallos graves del sistema.</translation>
    </message>
    <message>
        <source>An item with this name can&apos;t be hidden: its hidden name would be too long or could not be turned back.</source>
        <translation>No se puede ocultar un elemento con este nombre: su nombre oculto sería demasiado largo o no se podría deshacer.</translation>
    </message>
    <message>
        <source>There is no space left on the disk.</source>
        <translation>No queda espacio en el disco.</translation>
    </message>
    <message>
        <source>The disk is read-only.</source>
        <translation>El disco es de solo lectura.</translation>
    </message>
    <message>
        <source>The item can&apos;t be moved: it is a mount point, or parts of it lie on another volume.</source>
        <translation>No se puede mover el elemento: es un punto de montaje, o partes de él están en otro volumen.</translation>
    </message>
    <message>
        <source>The disk reported an input/output error.</source>
        <translation>El disco comunicó un error de entrada/salida.</translation>
    </message>
    <message>
        <source>The file is damaged.</source>
        <translation>El archivo está dañado.</translation>
    </message>
    <message>
        <source>The file is too large.</source>
        <translation>El archivo es demasiado grande.</translation>
    </message>
    <message>
        <source>The file was written by a newer version of Veilkeep.</source>
        <translation>El archivo lo escribió una versión más reciente de Veilkeep.</translation>
    </message>
    <message>
        <source>It was done, but may not survive a power cut.</source>
        <translation>Se hizo, pero puede que no sobreviva a un corte de corriente.</translation>
    </message>
    <message>
        <source>There is something there that is not a file.</source>
        <translation>Ahí hay algo que no es un archivo.</translation>
    </message>
    <message>
        <source>The request is not valid.</source>
        <translation>La petición no es válida.</translation>
    </message>
</context>
<context>
    <name>FileListActions</name>
    <message>
        <source>%1 (default)</source>
        <translation>%1 (predeterminada)</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>&lt;None&gt;</source>
        <translation>&lt;Ninguna&gt;</translation>
    </message>
    <message>
        <source>Other…</source>
        <translation>Otra…</translation>
    </message>
    <message>
        <source>Remove From List</source>
        <translation>Quitar de la lista</translation>
    </message>
    <message>
        <source>Remove From Group</source>
        <translation>Quitar del grupo</translation>
    </message>
    <message>
        <source>Remove Item</source>
        <translation>Quitar elemento</translation>
    </message>
    <message>
        <source>Remove selected item from the list</source>
        <translation>Quitar de la lista el elemento seleccionado</translation>
    </message>
    <message>
        <source>Remove Items</source>
        <translation>Quitar elementos</translation>
    </message>
    <message>
        <source>Remove selected items from the list</source>
        <translation>Quitar de la lista los elementos seleccionados</translation>
    </message>
    <message>
        <source>Reveal in Finder</source>
        <translation>Mostrar en el gestor de archivos</translation>
    </message>
    <message>
        <source>Hide file</source>
        <translation>Ocultar archivo</translation>
    </message>
    <message>
        <source>Unhide file</source>
        <translation>Recuperar archivo</translation>
    </message>
    <message>
        <source>Fix broken file</source>
        <translation>Localizar el archivo dañado</translation>
    </message>
    <message>
        <source>“%1” could not be opened.</source>
        <translation>No se pudo abrir «%1».</translation>
    </message>
    <message>
        <source>Some items could not be opened.</source>
        <translation>No se pudieron abrir algunos elementos.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>FilesViewController</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Are you sure you want to remove selected items from list?</source>
        <translation>¿Seguro que quiere quitar de la lista los elementos seleccionados?</translation>
    </message>
    <message>
        <source>Items will be deleted only from list, not filesystem.</source>
        <translation>Los elementos solo se quitan de la lista, no del sistema de archivos.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Quitar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Unhide all files</source>
        <translation>Recuperar todos los archivos</translation>
    </message>
    <message>
        <source>You are trying to remove some hidden files from list! Would you like to unhide them first?</source>
        <translation>Va a quitar de la lista archivos ocultos. ¿Quiere recuperarlos antes?</translation>
    </message>
    <message>
        <source>Unhide</source>
        <translation>Recuperar</translation>
    </message>
    <message>
        <source>Searching for inconsistent files. Please wait...</source>
        <translation>Buscando archivos incoherentes. Espere…</translation>
    </message>
    <message>
        <source>An item could not be added.</source>
        <translation>No se pudo añadir un elemento.</translation>
    </message>
    <message>
        <source>Some items could not be added.</source>
        <translation>No se pudieron añadir algunos elementos.</translation>
    </message>
    <message>
        <source>The following item is already in the list of %1 and cannot be added again:
</source>
        <translation>El siguiente elemento ya está en la lista de %1 y no se puede añadir otra vez:
</translation>
    </message>
    <message>
        <source>The following items are already in the list of %1 and they cannot be added again:
</source>
        <translation>Los siguientes elementos ya están en la lista de %1 y no se pueden añadir otra vez:
</translation>
    </message>
    <message>
        <source>The following item could not be found:
</source>
        <translation>No se encontró el siguiente elemento:
</translation>
    </message>
    <message>
        <source>The following items could not be found:
</source>
        <translation>No se encontraron los siguientes elementos:
</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>The &quot;%1&quot; item is a protected system file or folder.</source>
        <translation>El elemento «%1» es un archivo o una carpeta del sistema protegidos.</translation>
    </message>
    <message>
        <source>Veilkeep is not allowed to hide it to avoid serious system malfunctions.</source>
        <translation>Veilkeep no puede ocultarlo, para evitar fallos graves del sistema.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Previously visible file is broken.</source>
        <translation>Un archivo que era visible está dañado.</translation>
    </message>
    <message>
        <source>File %1 is in broken state. It might be moved to some new place. You can specify it&apos;s new location or just delete it from the list.</source>
        <translation>El archivo %1 está dañado. Puede que se haya movido. Puede indicar su nuevo lugar o simplemente quitarlo de la lista.</translation>
    </message>
    <message>
        <source>Locate File...</source>
        <translation>Localizar archivo…</translation>
    </message>
    <message>
        <source>Remove From List</source>
        <translation>Quitar de la lista</translation>
    </message>
    <message>
        <source>Previously hidden file is broken.</source>
        <translation>Un archivo que estaba oculto está dañado.</translation>
    </message>
    <message>
        <source>File %1 is in broken state. It might be moved to some new place. You can specify directory where it can reside and run restoring or just delete it from the list.</source>
        <translation>El archivo %1 está dañado. Puede que se haya movido. Puede indicar la carpeta en la que podría estar y buscar en ella, o simplemente quitarlo de la lista.</translation>
    </message>
    <message>
        <source>Restore Directory...</source>
        <translation>Buscar en carpeta…</translation>
    </message>
    <message>
        <source>Restoring is in progress. Please wait...</source>
        <translation>Buscando elementos ocultos. Espere…</translation>
    </message>
    <message>
        <source>Directory: %1</source>
        <translation>Carpeta: %1</translation>
    </message>
</context>
<context>
    <name>FinderPlugin</name>
    <message>
        <source>Finder plugin could not be uninstalled.</source>
        <translation>No se pudieron quitar las entradas del gestor de archivos.</translation>
    </message>
    <message>
        <source>Could not uninstall plugin from %1. Try to remove it manually.</source>
        <translation>No se pudo quitar %1. Intente eliminarlo a mano.</translation>
    </message>
    <message>
        <source>Plugin successfully uninstalled</source>
        <translation>Se quitaron las entradas</translation>
    </message>
    <message>
        <source>Plugin successfully uninstalled from %1
Please restart Finder to apply the changes.</source>
        <translation>Se quitó: %1
Reinicie el gestor de archivos para aplicar los cambios.</translation>
    </message>
    <message>
        <source>Finder plugin could not be installed.</source>
        <translation>No se pudieron instalar las entradas del gestor de archivos.</translation>
    </message>
    <message>
        <source>No file manager was found that %1 can have an entry in.</source>
        <translation>No se encontró ningún gestor de archivos en el que %1 pueda tener una entrada.</translation>
    </message>
    <message>
        <source>Could not create directory for Finder plugins: %1
Try to create it manually and repeat the installation.</source>
        <translation>No se pudo crear la carpeta para las entradas: %1
Intente crearla a mano y repita la instalación.</translation>
    </message>
    <message>
        <source>Could not install plugin to %1.</source>
        <translation>No se pudo instalar %1.</translation>
    </message>
    <message>
        <source>Plugin was successfully installed</source>
        <translation>Se instalaron las entradas</translation>
    </message>
    <message>
        <source>Plugin was successfully installed to %1
Please restart Finder to start using it.</source>
        <translation>Se instaló: %1
Reinicie el gestor de archivos para empezar a usarlas.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Restart Finder</source>
        <translation>Reiniciar el gestor de archivos</translation>
    </message>
    <message>
        <source>I&apos;ll restart it later</source>
        <translation>La reiniciaré más tarde</translation>
    </message>
    <message>
        <source>Entries for all users stay</source>
        <translation>Las entradas para todos los usuarios se quedan</translation>
    </message>
    <message>
        <source>%1: the entries came with %2 for all users of this computer, and go with it.</source>
        <translation>%1: las entradas llegaron con %2 para todos los usuarios de este equipo y se van con él.</translation>
    </message>
    <message>
        <source>%1 could not be restarted.</source>
        <translation>No se pudo reiniciar %1.</translation>
    </message>
    <message>
        <source>Please end it, if it is still running, and start it again yourself.</source>
        <translation>Ciérrelo si todavía está en ejecución y vuelva a iniciarlo usted mismo.</translation>
    </message>
</context>
<context>
    <name>GroupEdit</name>
    <message>
        <source>A group needs a name.</source>
        <translation>Un grupo necesita un nombre.</translation>
    </message>
    <message>
        <source>This name is too long: %1 characters are the most.</source>
        <translation>Este nombre es demasiado largo: como máximo %1 caracteres.</translation>
    </message>
    <message>
        <source>The name of a group is one line of text.</source>
        <translation>El nombre de un grupo es una sola línea de texto.</translation>
    </message>
    <message>
        <source>A group with this name exists already.</source>
        <translation>Ya existe un grupo con este nombre.</translation>
    </message>
    <message>
        <source>Documents</source>
        <translation>Documentos</translation>
    </message>
    <message>
        <source>Simple</source>
        <translation>Sencillo</translation>
    </message>
    <message>
        <source>Pictures</source>
        <translation>Imágenes</translation>
    </message>
    <message>
        <source>Public</source>
        <translation>Público</translation>
    </message>
    <message>
        <source>Pink</source>
        <translation>Rosa</translation>
    </message>
    <message>
        <source>Danger</source>
        <translation>Peligro</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Aplicaciones</translation>
    </message>
    <message>
        <source>Smile</source>
        <translation>Sonrisa</translation>
    </message>
    <message>
        <source>Drop</source>
        <translation>Gota</translation>
    </message>
    <message>
        <source>Games</source>
        <translation>Juegos</translation>
    </message>
    <message>
        <source>Movies</source>
        <translation>Películas</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Música</translation>
    </message>
    <message>
        <source>Private</source>
        <translation>Privado</translation>
    </message>
    <message>
        <source>Sites</source>
        <translation>Sitios</translation>
    </message>
    <message>
        <source>User</source>
        <translation>Usuario</translation>
    </message>
    <message>
        <source>XXX</source>
        <translation>XXX</translation>
    </message>
    <message>
        <source>The icon comes from an image file. OK replaces it with the one selected in the list; to keep it, choose the file again.</source>
        <translation>El icono procede de un archivo de imagen. Aceptar lo reemplaza por el elegido en la lista; para conservarlo, elija el archivo otra vez.</translation>
    </message>
    <message>
        <source>The image that you chose stays the icon: OK takes that. To take another one, cancel and edit the group again.</source>
        <translation>La imagen que eligió sigue siendo el icono: Aceptar toma esa. Para tomar otra, cancele y edite el grupo otra vez.</translation>
    </message>
    <message>
        <source>“%1” is no image that can be read. The icon stays as it is.</source>
        <translation>«%1» no es una imagen que se pueda leer. El icono queda como está.</translation>
    </message>
    <message>
        <source>This is no image that can be read. The icon stays as it is.</source>
        <translation>No es una imagen que se pueda leer. El icono queda como está.</translation>
    </message>
    <message>
        <source>This group is no longer there.</source>
        <translation>Este grupo ya no existe.</translation>
    </message>
    <message>
        <source>The image cannot be kept: %1</source>
        <translation>No se puede guardar la imagen: %1</translation>
    </message>
    <message>
        <source>“%1” can no longer be read. OK takes the icon that is selected in the list.</source>
        <translation>«%1» ya no se puede leer. Aceptar toma el icono elegido en la lista.</translation>
    </message>
    <message>
        <source>“%1” can no longer be read. OK leaves the icon as it is.</source>
        <translation>«%1» ya no se puede leer. Aceptar deja el icono como está.</translation>
    </message>
</context>
<context>
    <name>GroupNames</name>
    <message>
        <source>All Files</source>
        <translation>Todos los archivos</translation>
    </message>
    <message>
        <source>Custom Groups</source>
        <translation>Grupos propios</translation>
    </message>
    <message>
        <source>Secret Pictures</source>
        <translation>Imágenes secretas</translation>
    </message>
    <message>
        <source>Private Files</source>
        <translation>Archivos privados</translation>
    </message>
    <message>
        <source>AutoHide Group</source>
        <translation>Grupo AutoHide</translation>
    </message>
    <message>
        <source>New Group</source>
        <translation>Grupo nuevo</translation>
    </message>
    <message>
        <source>New Group %1</source>
        <translation>Grupo nuevo %1</translation>
    </message>
</context>
<context>
    <name>GroupRequests</name>
    <message>
        <source>This is no name for a group.</source>
        <translation>Ese no es un nombre para un grupo.</translation>
    </message>
    <message>
        <source>A group with this name exists already.</source>
        <translation>Ya existe un grupo con este nombre.</translation>
    </message>
    <message>
        <source>The name and the icon of this group stay as they are.</source>
        <translation>El nombre y el icono de este grupo se quedan como están.</translation>
    </message>
    <message>
        <source>Nothing was removed.</source>
        <translation>No se quitó nada.</translation>
    </message>
    <message>
        <source>This group stays where it is.</source>
        <translation>Este grupo se queda donde está.</translation>
    </message>
    <message>
        <source>No group can stand before this one.</source>
        <translation>Ningún grupo puede ir delante de este.</translation>
    </message>
    <message>
        <source>The item is not in the list.</source>
        <translation>El elemento no está en la lista.</translation>
    </message>
    <message>
        <source>There is no group of all items.</source>
        <translation>No existe un grupo de todos los elementos.</translation>
    </message>
    <message>
        <source>The item stayed visible.</source>
        <translation>El elemento siguió visible.</translation>
    </message>
    <message>
        <source>Some errors have been occured while hiding files</source>
        <translation>Se produjeron errores al ocultar archivos</translation>
    </message>
    <message>
        <source>The AutoHide groups are shown already.</source>
        <translation>Los grupos AutoHide ya se muestran.</translation>
    </message>
</context>
<context>
    <name>GroupViewController</name>
    <message>
        <source>Some errors have been occured while unhiding files</source>
        <translation>Se produjeron errores al recuperar archivos</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Unable to remove group &quot;%1&quot;.</source>
        <translation>No se puede quitar el grupo «%1».</translation>
    </message>
    <message>
        <source>Sorry, but this group cannot be removed because it contains all of files.</source>
        <translation>Este grupo no se puede quitar porque contiene todos los archivos.</translation>
    </message>
    <message>
        <source>Are you sure you want to remove &quot;%1&quot; group?</source>
        <translation>¿Seguro que quiere quitar el grupo «%1»?</translation>
    </message>
    <message>
        <source>All files of this group will be moved to the &quot;All Files&quot; group.</source>
        <translation>Todos los archivos de este grupo pasarán al grupo «Todos los archivos».</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Quitar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; Group</source>
        <translation>%1 el grupo «%2»</translation>
    </message>
    <message>
        <source>Unhide</source>
        <translation>Recuperar</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Ocultar</translation>
    </message>
    <message>
        <source>&quot;%1&quot; keeps its name until you enter another one.</source>
        <translation>«%1» conserva su nombre hasta que escriba otro.</translation>
    </message>
</context>
<context>
    <name>GroupsModel</name>
    <message>
        <source>1 item</source>
        <translation>1 elemento</translation>
    </message>
    <message>
        <source>%1 items</source>
        <translation>%1 elementos</translation>
    </message>
    <message>
        <source>shown</source>
        <translation>visible</translation>
    </message>
    <message>
        <source>hidden</source>
        <translation>oculto</translation>
    </message>
    <message>
        <source>AutoHide</source>
        <translation>AutoHide</translation>
    </message>
    <message>
        <source>%1 · %2</source>
        <translation>%1 · %2</translation>
    </message>
</context>
<context>
    <name>HideCaller</name>
    <message>
        <source>The item “%1” could not be hidden.</source>
        <translation>No se pudo ocultar el elemento «%1».</translation>
    </message>
    <message>
        <source>Some errors have been occured while hiding files</source>
        <translation>Hubo errores al ocultar los archivos</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>HideOperations</name>
    <message>
        <source>Not enough rights</source>
        <translation>Permisos insuficientes</translation>
    </message>
    <message>
        <source>%1 could not hide some of selected files</source>
        <translation>%1 no pudo ocultar algunos de los archivos seleccionados</translation>
    </message>
    <message>
        <source>You don&apos;t have enough permissions to hide some files, would you like to authentificate to hide these files?</source>
        <translation>No tiene permisos suficientes para ocultar algunos archivos. ¿Quiere autenticarse para ocultarlos?</translation>
    </message>
    <message>
        <source>%1 could not hide some items</source>
        <translation>%1 no pudo ocultar algunos elementos</translation>
    </message>
    <message>
        <source>You don&apos;t have enough permissions to hide some items. You can enable privileged files hiding in Veilkeep options.</source>
        <translation>No tiene permisos suficientes para ocultar algunos elementos. Puede activar la ocultación con privilegios en las preferencias de Veilkeep.</translation>
    </message>
    <message>
        <source>Not enough permitions.</source>
        <translation>Permisos insuficientes.</translation>
    </message>
    <message>
        <source>Unable to unhide some of selected files</source>
        <translation>No se pueden recuperar algunos de los archivos seleccionados</translation>
    </message>
    <message>
        <source>You don&apos;t have enough permissions to unhide some files, would you like to authentificate to unhide these files?</source>
        <translation>No tiene permisos suficientes para recuperar algunos archivos. ¿Quiere autenticarse para recuperarlos?</translation>
    </message>
    <message>
        <source>Unable to unhide some files</source>
        <translation>No se pueden recuperar algunos archivos</translation>
    </message>
    <message>
        <source>You don&apos;t have enough permissions to unhide some files. Please enable the &apos;Allow hiding files with privileges&apos; option in Preferences.</source>
        <translation>No tiene permisos suficientes para recuperar algunos archivos. Active la opción «Permitir ocultar archivos con privilegios» en las preferencias.</translation>
    </message>
    <message>
        <source>Parent directory is hidden.</source>
        <translation>La carpeta superior está oculta.</translation>
    </message>
    <message>
        <source>Parent directory is hidden</source>
        <translation>La carpeta superior está oculta</translation>
    </message>
    <message>
        <source>File &apos;%1&apos; is hidden because it&apos;s parent directory is hidden, but it isn&apos;t listed in Veilkeep. Try to run restore mode for the top-most visible directory of this file.</source>
        <translation>El archivo «%1» está oculto porque su carpeta superior está oculta, pero esta no está en la lista de Veilkeep. Busque elementos ocultos en la carpeta visible más alta de este archivo.</translation>
    </message>
    <message>
        <source>File &apos;%1&apos; is hidden because it&apos;s parent directory &apos;%2&apos; is hidden, but it isn&apos;t listed in Veilkeep. Try to run restore mode for &apos;%3&apos;.</source>
        <translation>El archivo «%1» está oculto porque su carpeta superior «%2» está oculta, pero esta no está en la lista de Veilkeep. Busque elementos ocultos en «%3».</translation>
    </message>
    <message>
        <source>File &apos;%1&apos; is hidden because it&apos;s parent directory &apos;%2&apos; is hidden.</source>
        <translation>El archivo «%1» está oculto porque su carpeta superior «%2» está oculta.</translation>
    </message>
    <message>
        <source>Unhide Top Level</source>
        <translation>Recuperar la superior</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>The volume that the item lies on is not mounted.</source>
        <translation>El volumen en el que está el elemento no está montado.</translation>
    </message>
    <message>
        <source>Authentificate</source>
        <translation>Autenticarse</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Error for file: %1</source>
        <translation>Error en el archivo: %1</translation>
    </message>
    <message>
        <source>Hiding of files started. Please wait...</source>
        <translation>Ocultando archivos. Espere…</translation>
    </message>
    <message>
        <source>Unhiding of files is in progress. Please wait...</source>
        <translation>Recuperando archivos. Espere…</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>Archivo: %1</translation>
    </message>
    <message>
        <source>The list of items could not be saved: %1</source>
        <translation>No se pudo guardar la lista de elementos: %1</translation>
    </message>
    <message>
        <source>Nothing was hidden.</source>
        <translation>No se ocultó nada.</translation>
    </message>
</context>
<context>
    <name>InfoPane</name>
    <message>
        <source>Hidden</source>
        <translation>Oculto</translation>
    </message>
    <message>
        <source>Broken</source>
        <translation>Dañado</translation>
    </message>
    <message>
        <source>Visible</source>
        <translation>Visible</translation>
    </message>
    <message>
        <source>Several</source>
        <translation>Varios</translation>
    </message>
    <message numerus="yes">
        <source>%Ln items</source>
        <translation>
            <numerusform>%Ln elemento</numerusform>
            <numerusform>%Ln elementos</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>InstallationOffer</name>
    <message>
        <source>Installation of %1 failed!</source>
        <translation>¡Falló la instalación de %1!</translation>
    </message>
    <message>
        <source>Try to copy it to a desired location manually. The recommended location is your Applications folder.</source>
        <translation>Intente copiarlo a mano al lugar que desee. Se recomienda su carpeta de aplicaciones.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>%1 is currently running not from Applications folder.</source>
        <translation>%1 no se está ejecutando desde la carpeta de aplicaciones.</translation>
    </message>
    <message>
        <source>Would you like to install %1 into your Applications folder before quitting?</source>
        <translation>¿Quiere instalar %1 en su carpeta de aplicaciones antes de salir?</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Instalar</translation>
    </message>
    <message>
        <source>Don&apos;t install</source>
        <translation>No instalar</translation>
    </message>
    <message>
        <source>%1 is already installed on your system!</source>
        <translation>¡%1 ya está instalado en su sistema!</translation>
    </message>
    <message>
        <source>Would you like to overwrite %1 in your Applications folder?</source>
        <translation>¿Quiere reemplazar %1 en su carpeta de aplicaciones?</translation>
    </message>
    <message>
        <source>Overwrite</source>
        <translation>Reemplazar</translation>
    </message>
    <message>
        <source>Don&apos;t overwrite</source>
        <translation>No reemplazar</translation>
    </message>
</context>
<context>
    <name>ItemRequests</name>
    <message>
        <source>The item is in the list already.</source>
        <translation>El elemento ya está en la lista.</translation>
    </message>
    <message>
        <source>The item could not be added.</source>
        <translation>No se pudo añadir el elemento.</translation>
    </message>
    <message>
        <source>The item is not in the list.</source>
        <translation>El elemento no está en la lista.</translation>
    </message>
    <message>
        <source>Nothing was removed.</source>
        <translation>No se quitó nada.</translation>
    </message>
    <message>
        <source>The items that were hidden were brought back, and all stay in the list.</source>
        <translation>Los elementos ocultos se recuperaron, y todos siguen en la lista.</translation>
    </message>
    <message>
        <source>Item is not hidden.</source>
        <translation>El elemento no está oculto.</translation>
    </message>
</context>
<context>
    <name>ListRequests</name>
    <message>
        <source>There is no such state of an item.</source>
        <translation>No existe tal estado de un elemento.</translation>
    </message>
</context>
<context>
    <name>LoadingTrouble</name>
    <message>
        <source>The list of items can only be read.</source>
        <translation>La lista de elementos es de solo lectura.</translation>
    </message>
    <message>
        <source>The list of items could not be read.</source>
        <translation>No se pudo leer la lista de elementos.</translation>
    </message>
    <message>
        <source>The list of groups can only be read.</source>
        <translation>La lista de grupos es de solo lectura.</translation>
    </message>
    <message>
        <source>The list of groups could not be read.</source>
        <translation>No se pudo leer la lista de grupos.</translation>
    </message>
    <message>
        <source>The list as it was on %1 was loaded instead (%2). What was hidden or brought back since then is found by restoring the folders that it lay in.</source>
        <translation>En su lugar se cargó la lista tal como estaba el %1 (%2). Lo que se ocultó o recuperó desde entonces se encuentra buscando en las carpetas en las que estaba.</translation>
    </message>
    <message>
        <source>The groups as they were on %1 were loaded instead (%2).</source>
        <translation>En su lugar se cargaron los grupos tal como estaban el %1 (%2).</translation>
    </message>
    <message>
        <source>It can be looked at, but not changed.</source>
        <translation>Se puede ver, pero no cambiar.</translation>
    </message>
    <message>
        <source>No earlier copy of it could be read. Hidden items are found again by restoring the folders that they lie in.</source>
        <translation>No se pudo leer ninguna copia anterior. Los elementos ocultos se encuentran de nuevo buscando en las carpetas en las que están.</translation>
    </message>
    <message>
        <source>No earlier copy of it could be read. The groups that Veilkeep begins with were made anew; no item is lost.</source>
        <translation>No se pudo leer ninguna copia anterior. Se crearon de nuevo los grupos con los que empieza Veilkeep; no se ha perdido ningún elemento.</translation>
    </message>
    <message>
        <source>The list cannot be saved, and nothing can be hidden, as long as it is there.</source>
        <translation>Mientras esté ahí, la lista no se puede guardar y no se puede ocultar nada.</translation>
    </message>
    <message>
        <source>The list cannot be saved as long as it is there.</source>
        <translation>Mientras esté ahí, la lista no se puede guardar.</translation>
    </message>
    <message>
        <source>The file stays as it is: nothing is saved to it.</source>
        <translation>El archivo se queda como está: no se guarda nada en él.</translation>
    </message>
    <message>
        <source>When the list is saved next, the file is kept beside it under a name that begins with %1.</source>
        <translation>La próxima vez que se guarde la lista, el archivo se conservará a su lado con un nombre que empieza por %1.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>MainMenu</name>
    <message>
        <source>Add Items…</source>
        <translation>Añadir elementos…</translation>
    </message>
    <message>
        <source>Find Hidden Items…</source>
        <translation>Buscar elementos ocultos…</translation>
    </message>
    <message>
        <source>Find Inconsistent Items</source>
        <translation>Buscar elementos incoherentes</translation>
    </message>
    <message>
        <source>Add Group</source>
        <translation>Añadir grupo</translation>
    </message>
    <message>
        <source>Remove Group</source>
        <translation>Quitar grupo</translation>
    </message>
    <message>
        <source>Edit Group…</source>
        <translation>Editar grupo…</translation>
    </message>
    <message>
        <source>Remove Item from List</source>
        <translation>Quitar el elemento de la lista</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message>
        <source>Open With</source>
        <translation>Abrir con</translation>
    </message>
    <message>
        <source>Show in File Manager</source>
        <translation>Mostrar en el gestor de archivos</translation>
    </message>
    <message>
        <source>Remove From List</source>
        <translation>Quitar de la lista</translation>
    </message>
    <message>
        <source>Remove Item</source>
        <translation>Quitar elemento</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Ocultar</translation>
    </message>
    <message>
        <source>Unhide</source>
        <translation>Recuperar</translation>
    </message>
    <message>
        <source>Quick Preview</source>
        <translation>Vista previa rápida</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Seleccionar todo</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Hide Group</source>
        <translation>Ocultar grupo</translation>
    </message>
    <message>
        <source>Unhide Group</source>
        <translation>Mostrar grupo</translation>
    </message>
    <message>
        <source>Hide AutoHide Groups</source>
        <translation>Ocultar grupos AutoHide</translation>
    </message>
    <message>
        <source>Show Info</source>
        <translation>Mostrar información</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Todos</translation>
    </message>
    <message>
        <source>Hidden</source>
        <translation>Ocultos</translation>
    </message>
    <message>
        <source>Visible</source>
        <translation>Visibles</translation>
    </message>
    <message>
        <source>Broken</source>
        <translation>Dañados</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Lugar</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Tamaño</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Estado</translation>
    </message>
    <message>
        <source>Set Password</source>
        <translation>Establecer contraseña</translation>
    </message>
    <message>
        <source>Show %1…</source>
        <translation>Mostrar %1…</translation>
    </message>
    <message>
        <source>%1 Help</source>
        <translation>Ayuda de %1</translation>
    </message>
    <message>
        <source>Forum</source>
        <translation>Foro</translation>
    </message>
    <message>
        <source>Support Center</source>
        <translation>Centro de asistencia</translation>
    </message>
    <message>
        <source>Send Feedback…</source>
        <translation>Enviar comentarios…</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Buscar actualizaciones…</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <translation>Preferencias…</translation>
    </message>
    <message>
        <source>About %1</source>
        <translation>Acerca de %1</translation>
    </message>
    <message>
        <source>Quit %1</source>
        <translation>Salir de %1</translation>
    </message>
    <message>
        <source>Show AutoHide Groups</source>
        <translation>Mostrar grupos AutoHide</translation>
    </message>
    <message>
        <source>Hide %1</source>
        <translation>Esconder %1</translation>
    </message>
</context>
<context>
    <name>OpenPanels</name>
    <message>
        <source>Locate Item</source>
        <translation>Localizar elemento</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Elegir</translation>
    </message>
    <message>
        <source>Restore Folders</source>
        <translation>Buscar en carpetas</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Add Items</source>
        <translation>Añadir elementos</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Añadir</translation>
    </message>
    <message>
        <source>Choose Image</source>
        <translation>Elegir imagen</translation>
    </message>
</context>
<context>
    <name>PasswordManager</name>
    <message>
        <source>Enter your %1 password:</source>
        <translation>Introduzca su contraseña de %1:</translation>
    </message>
</context>
<context>
    <name>ReportWindow</name>
    <message>
        <source>Problem report</source>
        <translation>Informe del problema</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Borrar</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>It stays on this computer until you pass it on; please read it before:</source>
        <translation>Se queda en este equipo hasta que usted lo entregue; léalo antes:</translation>
    </message>
</context>
<context>
    <name>RequestRoute</name>
    <message>
        <source>this program is missing or may not be run; please install Veilkeep anew</source>
        <translation>este programa falta o no se puede ejecutar; instale Veilkeep de nuevo</translation>
    </message>
    <message>
        <source>another process owns the list and did not answer</source>
        <translation>otro proceso tiene la lista y no respondió</translation>
    </message>
    <message>
        <source>interrupted; nothing was done</source>
        <translation>interrumpido; no se hizo nada</translation>
    </message>
    <message>
        <source>the application owns the list and did not answer</source>
        <translation>la aplicación tiene la lista y no respondió</translation>
    </message>
    <message>
        <source>the application ended before it was through</source>
        <translation>la aplicación terminó antes de acabar</translation>
    </message>
</context>
<context>
    <name>RequestRunner</name>
    <message>
        <source>This request is not understood.</source>
        <translation>No se entiende esta petición.</translation>
    </message>
    <message>
        <source>the list could not be saved: %1</source>
        <translation>no se pudo guardar la lista: %1</translation>
    </message>
    <message>
        <source>the groups could not be saved: %1</source>
        <translation>no se pudieron guardar los grupos: %1</translation>
    </message>
    <message>
        <source>The list was written by a newer version of Veilkeep and cannot be changed.</source>
        <translation>La lista la escribió una versión más reciente de Veilkeep y no se puede cambiar.</translation>
    </message>
    <message>
        <source>The groups were written by a newer version of Veilkeep and cannot be changed.</source>
        <translation>Los grupos los escribió una versión más reciente de Veilkeep y no se pueden cambiar.</translation>
    </message>
    <message>
        <source>The password was not given.</source>
        <translation>No se introdujo la contraseña.</translation>
    </message>
    <message>
        <source>Veilkeep asks for its password in a window.</source>
        <translation>Veilkeep pide su contraseña en una ventana.</translation>
    </message>
</context>
<context>
    <name>RequestService</name>
    <message>
        <source>Only the same user&apos;s programs may ask for this.</source>
        <translation>Solo los programas del mismo usuario pueden pedirlo.</translation>
    </message>
    <message>
        <source>One request after the other, please.</source>
        <translation>Las peticiones, de una en una.</translation>
    </message>
    <message>
        <source>Too many requests are waiting.</source>
        <translation>Hay demasiadas peticiones en espera.</translation>
    </message>
    <message>
        <source>An option of the request is of an unknown kind.</source>
        <translation>Una opción de la petición es de un tipo desconocido.</translation>
    </message>
    <message>
        <source>The list stays with this program.</source>
        <translation>La lista se queda con este programa.</translation>
    </message>
</context>
<context>
    <name>RequestWork</name>
    <message>
        <source>There is no such group.</source>
        <translation>No existe ese grupo.</translation>
    </message>
    <message>
        <source>This request is not understood.</source>
        <translation>No se entiende esta petición.</translation>
    </message>
</context>
<context>
    <name>RunHide</name>
    <message>
        <source>Only files and folders of this computer can be hidden.</source>
        <translation>Solo se pueden ocultar archivos y carpetas de este equipo.</translation>
    </message>
    <message>
        <source>No item was chosen.</source>
        <translation>No se eligió ningún elemento.</translation>
    </message>
</context>
<context>
    <name>SearchRequests</name>
    <message>
        <source>Searching for inconsistent files. Please wait...</source>
        <translation>Buscando archivos incoherentes. Espere…</translation>
    </message>
    <message>
        <source>%1: The volume of this item is not there.</source>
        <translation>%1: Falta el volumen de este elemento.</translation>
    </message>
    <message>
        <source>interrupted; not everything was searched</source>
        <translation>interrumpido; no se buscó en todo</translation>
    </message>
    <message>
        <source>The item is not in the list.</source>
        <translation>El elemento no está en la lista.</translation>
    </message>
    <message>
        <source>The item is not missing: it is at %1.</source>
        <translation>El elemento no falta: está en %1.</translation>
    </message>
    <message>
        <source>The item could not be added.</source>
        <translation>No se pudo añadir el elemento.</translation>
    </message>
    <message>
        <source>directories that could not be looked into: %1</source>
        <translation>carpetas en las que no se pudo buscar: %1</translation>
    </message>
    <message>
        <source>items taken over: %1</source>
        <translation>elementos incorporados: %1</translation>
    </message>
</context>
<context>
    <name>SoftwareUpdater</name>
    <message>
        <source>The package service gave no reason.</source>
        <translation>El servicio de paquetes no dio ningún motivo.</translation>
    </message>
    <message>
        <source>Updates could not be looked for.</source>
        <translation>No se pudieron buscar actualizaciones.</translation>
    </message>
    <message>
        <source>It offers the package in version %1.</source>
        <translation>Ofrece el paquete en la versión %1.</translation>
    </message>
    <message>
        <source>This copy of %1 was not installed as a package.</source>
        <translation>Esta copia de %1 no se instaló como paquete.</translation>
    </message>
    <message>
        <source>The system&apos;s package service cannot tell of newer versions of it.</source>
        <translation>El servicio de paquetes del sistema no puede informar de versiones más recientes.</translation>
    </message>
    <message>
        <source>%1 is up to date.</source>
        <translation>%1 está actualizado.</translation>
    </message>
    <message>
        <source>Version %1 is the newest one that the package sources of this system offer.</source>
        <translation>La versión %1 es la más reciente que ofrecen las fuentes de paquetes de este sistema.</translation>
    </message>
    <message>
        <source>There is a new version of %1.</source>
        <translation>Hay una versión nueva de %1.</translation>
    </message>
    <message>
        <source>Version %1 can be installed, you have version %2. It comes with the other updates of your system.</source>
        <translation>Se puede instalar la versión %1; usted tiene la %2. Llega con las demás actualizaciones de su sistema.</translation>
    </message>
    <message>
        <source>There is no package service on this system.</source>
        <translation>En este sistema no hay servicio de paquetes.</translation>
    </message>
    <message>
        <source>Without PackageKit %1 cannot look for updates. They come with the other updates of your system.</source>
        <translation>Sin PackageKit, %1 no puede buscar actualizaciones. Llegan con las demás actualizaciones de su sistema.</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Software Update</source>
        <translation>Actualización de software</translation>
    </message>
    <message>
        <source>Looking for updates…</source>
        <translation>Buscando actualizaciones…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>ValueFormatting</name>
    <message>
        <source>Unknown</source>
        <translation>Desconocido</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>N/D</translation>
    </message>
    <message>
        <source>Zero KB</source>
        <translation>0 KB</translation>
    </message>
    <message>
        <source>%1 KB</source>
        <translation>%1 KB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 GB</translation>
    </message>
    <message numerus="yes">
        <source> for %n items</source>
        <translation>
            <numerusform> en %n elemento</numerusform>
            <numerusform> en %n elementos</numerusform>
        </translation>
    </message>
    <message>
        <source>Info</source>
        <translation>Información</translation>
    </message>
</context>
<context>
    <name>veilkeep::ADApp</name>
    <message>
        <source>%1 is running, but does not answer.</source>
        <translation>%1 ya está en marcha, pero no responde.</translation>
    </message>
    <message>
        <source>Please wait a moment, or end it and start it again.</source>
        <translation>Espere un momento, o ciérrelo y vuelva a iniciarlo.</translation>
    </message>
    <message>
        <source>Another program is using the list of %1.</source>
        <translation>Otro programa está usando la lista de %1.</translation>
    </message>
    <message>
        <source>Only one program at a time can work on it. Please end the other one first.</source>
        <translation>Solo un programa a la vez puede trabajar con ella. Cierre antes el otro.</translation>
    </message>
    <message>
        <source>The list of %1 cannot be used.</source>
        <translation>No se puede usar la lista de %1.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Some errors have been occured while hiding files</source>
        <translation>Se produjeron errores al ocultar archivos</translation>
    </message>
    <message>
        <source> Hide Info</source>
        <translation>Ocultar información</translation>
    </message>
    <message>
        <source>Show Info</source>
        <translation>Mostrar información</translation>
    </message>
    <message>
        <source>Hide info pane</source>
        <translation>Ocultar el panel de información</translation>
    </message>
    <message>
        <source>Show info pane</source>
        <translation>Mostrar el panel de información</translation>
    </message>
    <message>
        <source>Remove Item from List</source>
        <translation>Quitar el elemento de la lista</translation>
    </message>
    <message>
        <source>Remove Item from Group</source>
        <translation>Quitar el elemento del grupo</translation>
    </message>
    <message>
        <source>Return to Veilkeep</source>
        <translation>Volver a Veilkeep</translation>
    </message>
    <message>
        <source>Force Quit</source>
        <translation>Forzar salida</translation>
    </message>
    <message>
        <source>%1 goes on without a window.</source>
        <translation>%1 sigue en marcha sin ventana.</translation>
    </message>
    <message>
        <source>This desktop has no place for the program&apos;s icon. Start %1 once more to see its window again; choose Quit in its menu to end it.</source>
        <translation>Este escritorio no tiene sitio para el icono del programa. Inicie %1 otra vez para volver a ver su ventana; elija «Salir» en su menú para cerrarlo.</translation>
    </message>
    <message>
        <source>The guide could not be opened.</source>
        <translation>No se pudo abrir la guía.</translation>
    </message>
    <message>
        <source>No program was found that shows it. It lies at %1.</source>
        <translation>No se encontró ningún programa que la muestre. Está en %1.</translation>
    </message>
    <message>
        <source>The application could not be started.</source>
        <translation>No se pudo iniciar la aplicación.</translation>
    </message>
    <message>
        <source>The item could not be shown.</source>
        <translation>No se pudo mostrar el elemento.</translation>
    </message>
    <message>
        <source>Feedback</source>
        <translation>Comentarios</translation>
    </message>
    <message>
        <source>The problem report could not be written.</source>
        <translation>No se pudo escribir el informe del problema.</translation>
    </message>
    <message>
        <source>The problem report could not be opened.</source>
        <translation>No se pudo abrir el informe del problema.</translation>
    </message>
    <message>
        <source>The problem report could not be deleted.</source>
        <translation>No se pudo borrar el informe del problema.</translation>
    </message>
    <message>
        <source>The last changes could not be saved.</source>
        <translation>No se pudieron guardar los últimos cambios.</translation>
    </message>
    <message>
        <source>Quit Anyway</source>
        <translation>Salir de todos modos</translation>
    </message>
    <message>
        <source>Something went wrong, and a problem report was written.</source>
        <translation>Algo salió mal y se escribió un informe del problema.</translation>
    </message>
    <message>
        <source>A report on this program and its desktop was written, for you to add what you want to say.</source>
        <translation>Se escribió un informe sobre este programa y su escritorio, al que puede añadir lo que quiera decir.</translation>
    </message>
    <message>
        <source>Only files and folders of this computer can be shown.</source>
        <translation>Solo se pueden mostrar archivos y carpetas de este equipo.</translation>
    </message>
    <message>
        <source>Change Password</source>
        <translation>Cambiar contraseña</translation>
    </message>
    <message>
        <source>Set Password</source>
        <translation>Establecer contraseña</translation>
    </message>
    <message>
        <source>Change application password</source>
        <translation>Cambiar la contraseña de la aplicación</translation>
    </message>
    <message>
        <source>Set application password</source>
        <translation>Establecer la contraseña de la aplicación</translation>
    </message>
    <message>
        <source>%1 ended unexpectedly the last time, and a problem report was written.</source>
        <translation>La última vez %1 terminó de forma inesperada, y se escribió un informe del problema.</translation>
    </message>
    <message>
        <source>The settings were damaged and begin anew.</source>
        <translation>Los ajustes estaban dañados y empiezan de nuevo.</translation>
    </message>
    <message>
        <source>What they were is kept in %1. Where a password was set, please set it again.</source>
        <translation>Lo que eran se conserva en %1. Si había una contraseña, establézcala otra vez.</translation>
    </message>
    <message>
        <source>The settings are damaged and count as not set.</source>
        <translation>Los ajustes están dañados y cuentan como no establecidos.</translation>
    </message>
</context>
<context>
    <name>veilkeep::AlertWindow</name>
    <message>
        <source>Applications</source>
        <translation>Aplicaciones</translation>
    </message>
    <message>
        <source>Do not ask again</source>
        <translation>No volver a preguntar</translation>
    </message>
</context>
<context>
    <name>veilkeep::ApplicationPanel</name>
    <message>
        <source>Choose Application</source>
        <translation>Elegir aplicación</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Aplicaciones</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>veilkeep::EmptyTableNotice</name>
    <message>
        <source>No items match “%1”.</source>
        <translation>Ningún elemento coincide con «%1».</translation>
    </message>
    <message>
        <source>Nothing is broken. All items are where they should be.</source>
        <translation>No hay nada dañado. Todos los elementos están en su lugar.</translation>
    </message>
    <message>
        <source>No items are hidden.</source>
        <translation>No hay elementos ocultos.</translation>
    </message>
    <message>
        <source>No items are visible.</source>
        <translation>No hay elementos visibles.</translation>
    </message>
    <message>
        <source>Drop files and folders here</source>
        <translation>Suelte aquí archivos y carpetas</translation>
    </message>
    <message>
        <source>Add Items…</source>
        <translation>Añadir elementos…</translation>
    </message>
    <message>
        <source>Clear Search</source>
        <translation>Borrar la búsqueda</translation>
    </message>
    <message>
        <source>Show All Items</source>
        <translation>Mostrar todos los elementos</translation>
    </message>
</context>
<context>
    <name>veilkeep::ErrorTable</name>
    <message>
        <source>Errors</source>
        <translation>Errores</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
</context>
<context>
    <name>veilkeep::ErrorTableModel</name>
    <message>
        <source>Name</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
</context>
<context>
    <name>veilkeep::FilesContextMenu</name>
    <message>
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message>
        <source>Fix…</source>
        <translation>Localizar…</translation>
    </message>
    <message>
        <source>Unhide</source>
        <translation>Recuperar</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Ocultar</translation>
    </message>
    <message>
        <source>Open With</source>
        <translation>Abrir con</translation>
    </message>
    <message>
        <source>Show in File Manager</source>
        <translation>Mostrar en el gestor de archivos</translation>
    </message>
    <message>
        <source>Quick Preview</source>
        <translation>Vista previa rápida</translation>
    </message>
</context>
<context>
    <name>veilkeep::FilesTableDelegate</name>
    <message>
        <source>%1 · %2</source>
        <translation>%1 · %2</translation>
    </message>
</context>
<context>
    <name>veilkeep::FilesTableModel</name>
    <message>
        <source>Searching…</source>
        <translation>Buscando…</translation>
    </message>
    <message>
        <source>Disk not connected</source>
        <translation>Disco no conectado</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>No encontrado</translation>
    </message>
    <message>
        <source>hidden</source>
        <translation>oculto</translation>
    </message>
    <message>
        <source>visible</source>
        <translation>visible</translation>
    </message>
    <message>
        <source>%1, %2, %3, %4</source>
        <comment>name, place, size, state</comment>
        <translation>%1, %2, %3, %4</translation>
    </message>
</context>
<context>
    <name>veilkeep::FilesTableView</name>
    <message>
        <source>Items</source>
        <translation>Elementos</translation>
    </message>
</context>
<context>
    <name>veilkeep::FilterBar</name>
    <message>
        <source>Show</source>
        <translation>Mostrar</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Todos</translation>
    </message>
    <message>
        <source>Hidden</source>
        <translation>Ocultos</translation>
    </message>
    <message>
        <source>Visible</source>
        <translation>Visibles</translation>
    </message>
    <message>
        <source>Broken</source>
        <translation>Dañados</translation>
    </message>
    <message>
        <source>All items</source>
        <translation>Todos los elementos</translation>
    </message>
    <message>
        <source>Hidden items</source>
        <translation>Elementos ocultos</translation>
    </message>
    <message>
        <source>Visible items</source>
        <translation>Elementos visibles</translation>
    </message>
    <message>
        <source>Broken items</source>
        <translation>Elementos dañados</translation>
    </message>
</context>
<context>
    <name>veilkeep::FolderModel</name>
    <message>
        <source>Folder</source>
        <translation>Carpeta</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Archivo</translation>
    </message>
</context>
<context>
    <name>veilkeep::GeneralPage</name>
    <message>
        <source>Start:</source>
        <translation>Inicio:</translation>
    </message>
    <message>
        <source>Launch %1 at login</source>
        <translation>Iniciar %1 al entrar en la sesión</translation>
    </message>
    <message>
        <source>Show:</source>
        <translation>Mostrar:</translation>
    </message>
    <message>
        <source>%1 in the taskbar</source>
        <translation>%1 en la barra de tareas</translation>
    </message>
    <message>
        <source>Icon in the panel</source>
        <translation>Icono en el panel</translation>
    </message>
    <message>
        <source>%1 needs to be relaunched for this to take effect.</source>
        <translation>Hay que reiniciar %1 para que esto tenga efecto.</translation>
    </message>
    <message>
        <source>File managers:</source>
        <translation>Gestores de archivos:</translation>
    </message>
    <message>
        <source>“Hide with %1” and “Show in %1” in their menus</source>
        <translation>«Ocultar con %1» y «Mostrar en %1» en sus menús</translation>
    </message>
    <message>
        <source>Items:</source>
        <translation>Elementos:</translation>
    </message>
    <message>
        <source>Allow those that need administrator rights</source>
        <translation>Permitir los que requieren derechos de administrador</translation>
    </message>
    <message>
        <source>Remove their traces from lists of recent files while hiding</source>
        <translation>Al ocultar, quitar su rastro de las listas de archivos recientes</translation>
    </message>
    <message>
        <source>Ask before removing them from the list</source>
        <translation>Preguntar antes de quitarlos de la lista</translation>
    </message>
    <message>
        <source>Sounds:</source>
        <translation>Sonidos:</translation>
    </message>
    <message>
        <source>Play sounds</source>
        <translation>Reproducir sonidos</translation>
    </message>
</context>
<context>
    <name>veilkeep::GroupDelegate</name>
    <message>
        <source>Name of the group</source>
        <translation>Nombre del grupo</translation>
    </message>
</context>
<context>
    <name>veilkeep::GroupEditSheet</name>
    <message>
        <source>&amp;AutoHide</source>
        <translation>&amp;AutoHide</translation>
    </message>
    <message>
        <source>Edit Group</source>
        <translation>Editar grupo</translation>
    </message>
    <message>
        <source>Select Existing Icons</source>
        <translation>Iconos existentes</translation>
    </message>
    <message>
        <source>Name of the group</source>
        <translation>Nombre del grupo</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Nombre:</translation>
    </message>
    <message>
        <source>&amp;Icon:</source>
        <translation>&amp;Icono:</translation>
    </message>
    <message>
        <source>Hide this group whenever you leave the computer</source>
        <translation>Ocultar este grupo cada vez que deje el equipo</translation>
    </message>
    <message>
        <source>&amp;Choose Image…</source>
        <translation>&amp;Elegir imagen…</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>&amp;Reset</source>
        <translation>&amp;Restablecer</translation>
    </message>
    <message>
        <source>Go back and enter another name. Nothing has been changed.</source>
        <translation>Vuelva atrás y escriba otro nombre. No se ha cambiado nada.</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Atrás</translation>
    </message>
</context>
<context>
    <name>veilkeep::GroupPanel</name>
    <message>
        <source>Hide the group</source>
        <translation>Ocultar el grupo</translation>
    </message>
    <message>
        <source>AutoHide</source>
        <translation>AutoHide</translation>
    </message>
    <message>
        <source>Hide this group whenever you leave the computer</source>
        <translation>Ocultar este grupo cada vez que usted deja el equipo</translation>
    </message>
    <message>
        <source>Add a group</source>
        <translation>Añadir un grupo</translation>
    </message>
    <message>
        <source>Remove the group</source>
        <translation>Quitar el grupo</translation>
    </message>
    <message>
        <source>Edit the group</source>
        <translation>Editar el grupo</translation>
    </message>
    <message>
        <source>Hidden</source>
        <translation>Oculto</translation>
    </message>
    <message>
        <source>Shown</source>
        <translation>Visible</translation>
    </message>
</context>
<context>
    <name>veilkeep::GroupsView</name>
    <message>
        <source>Groups</source>
        <translation>Grupos</translation>
    </message>
    <message>
        <source>Edit…</source>
        <translation>Editar…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Quitar</translation>
    </message>
</context>
<context>
    <name>veilkeep::ImageWell</name>
    <message>
        <source>Icon</source>
        <translation>Icono</translation>
    </message>
    <message>
        <source>An image can be dropped here</source>
        <translation>Aquí se puede soltar una imagen</translation>
    </message>
    <message>
        <source>Drop an image here</source>
        <translation>Suelte aquí una imagen</translation>
    </message>
</context>
<context>
    <name>veilkeep::InfoContents</name>
    <message>
        <source>Name</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Estado</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Tamaño</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Creado</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Modificado</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Lugar</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Grupo</translation>
    </message>
</context>
<context>
    <name>veilkeep::InfoPane</name>
    <message>
        <source>Nothing selected</source>
        <translation>Nada seleccionado</translation>
    </message>
</context>
<context>
    <name>veilkeep::ItemPanel</name>
    <message>
        <source>Enclosing Folder</source>
        <translation>Carpeta superior</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Lugar</translation>
    </message>
    <message>
        <source>Folders</source>
        <translation>Carpetas</translation>
    </message>
    <message>
        <source>Files and folders</source>
        <translation>Archivos y carpetas</translation>
    </message>
    <message>
        <source>Show hidden items</source>
        <translation>Mostrar archivos escondidos</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>This folder cannot be read: %1</source>
        <translation>No se puede leer esta carpeta: %1</translation>
    </message>
    <message>
        <source>There is nothing at this place.</source>
        <translation>En este lugar no hay nada.</translation>
    </message>
    <message>
        <source>An item of this kind cannot be chosen here.</source>
        <translation>Aquí no se puede elegir un elemento de este tipo.</translation>
    </message>
</context>
<context>
    <name>veilkeep::MainMenu</name>
    <message>
        <source>File</source>
        <translation>Archivo</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Editar</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ver</translation>
    </message>
    <message>
        <source>Items to Show</source>
        <translation>Elementos que se muestran</translation>
    </message>
    <message>
        <source>Sort By</source>
        <translation>Ordenar por</translation>
    </message>
    <message>
        <source>Groups</source>
        <translation>Grupos</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Ayuda</translation>
    </message>
    <message>
        <source>Move to Group</source>
        <translation>Mover al grupo</translation>
    </message>
</context>
<context>
    <name>veilkeep::MainToolBar</name>
    <message>
        <source>Toolbar</source>
        <translation>Barra de herramientas</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Clear Search</source>
        <translation>Borrar la búsqueda</translation>
    </message>
</context>
<context>
    <name>veilkeep::MessageBar</name>
    <message>
        <source>Warning</source>
        <translation>Advertencia</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Información</translation>
    </message>
    <message>
        <source>Dismiss this message</source>
        <translation>Cerrar este mensaje</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Cerrar</translation>
    </message>
</context>
<context>
    <name>veilkeep::PackageKitUpdates</name>
    <message>
        <source>The package service ended.</source>
        <translation>El servicio de paquetes terminó.</translation>
    </message>
</context>
<context>
    <name>veilkeep::PasswordPage</name>
    <message>
        <source>⇪ Caps Lock is on</source>
        <translation>⇪ Bloq Mayús está activado</translation>
    </message>
    <message>
        <source>Only plain letters, digits and signs protect.</source>
        <translation>Solo protegen las letras sin acentos, las cifras y los signos.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Set the password that opens %1</source>
        <translation>Establecer la contraseña que abre %1</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>Contraseña:</translation>
    </message>
    <message>
        <source>Once more:</source>
        <translation>Otra vez:</translation>
    </message>
    <message>
        <source>The two entries differ.</source>
        <translation>Las dos entradas son distintas.</translation>
    </message>
    <message>
        <source>The password is empty.</source>
        <translation>La contraseña está vacía.</translation>
    </message>
    <message>
        <source>Change the password that opens %1</source>
        <translation>Cambiar la contraseña que abre %1</translation>
    </message>
    <message>
        <source>Old password:</source>
        <translation>Contraseña antigua:</translation>
    </message>
    <message>
        <source>New password:</source>
        <translation>Contraseña nueva:</translation>
    </message>
    <message>
        <source>The old password is wrong.</source>
        <translation>La contraseña antigua no es correcta.</translation>
    </message>
    <message>
        <source>The two new entries differ.</source>
        <translation>Las dos entradas nuevas son distintas.</translation>
    </message>
    <message>
        <source>Enter the password to switch it off</source>
        <translation>Escriba la contraseña para desactivarla</translation>
    </message>
    <message>
        <source>Wrong password:</source>
        <translation>Contraseña incorrecta:</translation>
    </message>
    <message>
        <source>of %1 attempts used</source>
        <translation>de %1 intentos usados</translation>
    </message>
</context>
<context>
    <name>veilkeep::PasswordPanel</name>
    <message>
        <source>Wrong password:</source>
        <translation>Contraseña incorrecta:</translation>
    </message>
    <message>
        <source>of %1 attempts used</source>
        <translation>de %1 intentos usados</translation>
    </message>
    <message>
        <source>⇪ Caps Lock is on</source>
        <translation>⇪ Bloq Mayús está activado</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>veilkeep::PlaceList</name>
    <message>
        <source>Places</source>
        <translation>Lugares</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Carpeta personal</translation>
    </message>
    <message>
        <source>File System</source>
        <translation>Sistema de archivos</translation>
    </message>
</context>
<context>
    <name>veilkeep::PrefsController</name>
    <message>
        <source>General</source>
        <translation>General</translation>
    </message>
    <message>
        <source>Security</source>
        <translation>Seguridad</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Actualización</translation>
    </message>
    <message>
        <source>The setting could not be stored.</source>
        <translation>No se pudo guardar el ajuste.</translation>
    </message>
    <message>
        <source>Launching at login could not be changed.</source>
        <translation>No se pudo cambiar el inicio al entrar en la sesión.</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Nunca</translation>
    </message>
    <message>
        <source>The password could not be stored.</source>
        <translation>No se pudo guardar la contraseña.</translation>
    </message>
</context>
<context>
    <name>veilkeep::PrefsWindow</name>
    <message>
        <source>Preferences Toolbar</source>
        <translation>Páginas de las preferencias</translation>
    </message>
</context>
<context>
    <name>veilkeep::PreviewFrame</name>
    <message>
        <source>Preview</source>
        <translation>Vista previa</translation>
    </message>
</context>
<context>
    <name>veilkeep::ProgressPanel</name>
    <message>
        <source>Progress</source>
        <translation>Progreso</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
    <message>
        <source>Cancelling…</source>
        <translation>Cancelando…</translation>
    </message>
</context>
<context>
    <name>veilkeep::QuickFacts</name>
    <message>
        <source>Not found</source>
        <translation>No encontrado</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Tipo</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Tamaño</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Estado</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Lugar</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Creado</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Modificado</translation>
    </message>
    <message>
        <source>Hidden</source>
        <translation>Oculto</translation>
    </message>
    <message>
        <source>Visible</source>
        <translation>Visible</translation>
    </message>
</context>
<context>
    <name>veilkeep::QuickPanel</name>
    <message>
        <source>Previous item</source>
        <translation>Elemento anterior</translation>
    </message>
    <message>
        <source>Next item</source>
        <translation>Elemento siguiente</translation>
    </message>
    <message>
        <source>Previous page</source>
        <translation>Página anterior</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>Página siguiente</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message>
        <source>Text of the item</source>
        <translation>Texto del elemento</translation>
    </message>
    <message>
        <source>Nothing is selected</source>
        <translation>No hay nada seleccionado</translation>
    </message>
    <message>
        <source>Picture of the item</source>
        <translation>Imagen del elemento</translation>
    </message>
    <message>
        <source>Quick Preview</source>
        <translation>Vista previa rápida</translation>
    </message>
    <message>
        <source>the beginning</source>
        <translation>el principio</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Página %1 de %2</translation>
    </message>
</context>
<context>
    <name>veilkeep::Relaunching</name>
    <message>
        <source>Relaunch required</source>
        <translation>Hay que reiniciar</translation>
    </message>
    <message>
        <source>%1 needs to be relaunched for some changes to take effect</source>
        <translation>Hay que reiniciar %1 para que algunos cambios tengan efecto</translation>
    </message>
    <message>
        <source>Relaunch</source>
        <translation>Reiniciar</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Más tarde</translation>
    </message>
    <message>
        <source>%1 could not be relaunched.</source>
        <translation>No se pudo reiniciar %1.</translation>
    </message>
    <message>
        <source>%1 could not be replaced. The former one is still there.</source>
        <translation>No se pudo reemplazar %1. La versión anterior sigue ahí.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>veilkeep::SecurityPage</name>
    <message>
        <source>Password:</source>
        <translation>Contraseña:</translation>
    </message>
    <message>
        <source>Require a password to open %1</source>
        <translation>Pedir una contraseña para abrir %1</translation>
    </message>
    <message>
        <source>Set Password…</source>
        <translation>Establecer contraseña…</translation>
    </message>
    <message>
        <source>Change Password…</source>
        <translation>Cambiar contraseña…</translation>
    </message>
    <message>
        <source>Hide AutoHide groups when…</source>
        <translation>Ocultar los grupos AutoHide cuando…</translation>
    </message>
    <message>
        <source>the computer goes to sleep</source>
        <translation>el equipo se suspende</translation>
    </message>
    <message>
        <source>the screen is locked</source>
        <translation>se bloquea la pantalla</translation>
    </message>
    <message>
        <source>another user&apos;s session comes to the front</source>
        <translation>pasa al frente la sesión de otro usuario</translation>
    </message>
    <message>
        <source>%1 quits</source>
        <translation>se sale de %1</translation>
    </message>
</context>
<context>
    <name>veilkeep::StatusMenu</name>
    <message>
        <source>Groups</source>
        <translation>Grupos</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Mostrar</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Ocultar</translation>
    </message>
</context>
<context>
    <name>veilkeep::SummaryLine</name>
    <message>
        <source>Selection</source>
        <translation>Selección</translation>
    </message>
    <message>
        <source>Summary</source>
        <translation>Resumen</translation>
    </message>
    <message>
        <source>Hide Selected Items</source>
        <translation>Ocultar los elementos seleccionados</translation>
    </message>
    <message>
        <source>Hides the selected items, or shows them again</source>
        <translation>Oculta los elementos seleccionados, o los recupera</translation>
    </message>
    <message>
        <source>1 item</source>
        <translation>1 elemento</translation>
    </message>
    <message numerus="yes">
        <source>%Ln items</source>
        <translation>
            <numerusform>%Ln elemento</numerusform>
            <numerusform>%Ln elementos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln hidden</source>
        <translation>
            <numerusform>%Ln oculto</numerusform>
            <numerusform>%Ln ocultos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln broken</source>
        <translation>
            <numerusform>%Ln dañado</numerusform>
            <numerusform>%Ln dañados</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>veilkeep::UpdatePage</name>
    <message>
        <source>Version of %1:</source>
        <translation>Versión de %1:</translation>
    </message>
    <message>
        <source>Last check:</source>
        <translation>Última búsqueda:</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Buscar ahora</translation>
    </message>
</context>
<context>
    <name>veilkeep::VeilkeepWindow</name>
    <message>
        <source>Width of the groups</source>
        <translation>Ancho de los grupos</translation>
    </message>
    <message>
        <source>Width of the info pane</source>
        <translation>Ancho del panel de información</translation>
    </message>
</context>
<context>
    <name>veilkeep::WindowMessages</name>
    <message>
        <source>The list of items was saved: %1</source>
        <translation>Se guardó la lista de elementos: %1</translation>
    </message>
    <message>
        <source>The list of items could not be saved: %1</source>
        <translation>No se pudo guardar la lista de elementos: %1</translation>
    </message>
    <message>
        <source>The groups were saved: %1</source>
        <translation>Se guardaron los grupos: %1</translation>
    </message>
    <message>
        <source>The groups could not be saved: %1</source>
        <translation>No se pudieron guardar los grupos: %1</translation>
    </message>
    <message>
        <source>1 item could not be hidden automatically and is still visible.</source>
        <translation>1 elemento no se pudo ocultar automáticamente y sigue visible.</translation>
    </message>
    <message numerus="yes">
        <source>%Ln items could not be hidden automatically and are still visible.</source>
        <translation>
            <numerusform>%Ln elemento no se pudo ocultar automáticamente y sigue visible.</numerusform>
            <numerusform>%Ln elementos no se pudieron ocultar automáticamente y siguen visibles.</numerusform>
        </translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Mostrar</translation>
    </message>
    <message numerus="yes">
        <source>%Ln folders</source>
        <translation>
            <numerusform>%Ln carpeta</numerusform>
            <numerusform>%Ln carpetas</numerusform>
        </translation>
    </message>
    <message>
        <source>No hidden items were found in %1.</source>
        <translation>No se encontraron elementos ocultos en %1.</translation>
    </message>
    <message>
        <source>1 hidden item was found in %1.</source>
        <translation>Se encontró 1 elemento oculto en %1.</translation>
    </message>
    <message numerus="yes">
        <source>%Ln hidden items were found in %1.</source>
        <translation>
            <numerusform>Se encontró %Ln elemento oculto en %1.</numerusform>
            <numerusform>Se encontraron %Ln elementos ocultos en %1.</numerusform>
        </translation>
    </message>
    <message>
        <source>1 folder could not be read.</source>
        <translation>No se pudo leer 1 carpeta.</translation>
    </message>
    <message numerus="yes">
        <source>%Ln folders could not be read.</source>
        <translation>
            <numerusform>No se pudo leer %Ln carpeta.</numerusform>
            <numerusform>No se pudieron leer %Ln carpetas.</numerusform>
        </translation>
    </message>
    <message>
        <source>The search did not reach its end: %1</source>
        <translation>La búsqueda no llegó al final: %1</translation>
    </message>
</context>
</TS>
