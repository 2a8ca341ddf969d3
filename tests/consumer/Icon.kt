package org.example

import android.graphics.Bitmap
import com.velmora.display.fennic.VelUIBitmapUtils

/** The same as Desktop.java, from Kotlin. */
fun main() {
    val icon = Bitmap.createBitmap(3, 2, Bitmap.Config.ARGB_8888)
    val texture = Bitmap.createBitmap(3, 2, Bitmap.Config.ARGB_8888)
    icon.eraseColor(0xFF66FF00.toInt())
    texture.eraseColor(0xFF800000.toInt())
    val status = VelUIBitmapUtils.nativeBitmapHandle4(icon, texture)
    println("$status ${Integer.toHexString(icon.getPixel(2, 1))}")
}
