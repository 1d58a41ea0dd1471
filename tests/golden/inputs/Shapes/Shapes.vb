Imports System
Imports System.Collections.Generic
Imports Words = System.String

''' <summary>What can be drawn.</summary>
Public Interface IShape
  ReadOnly Property Area As Double
  Sub Draw(canvas As Object)
End Interface

Namespace Round
  ''' <summary>A circle.</summary>
  ''' <param name="T">of what</param>
  <Serializable>
  Public NotInheritable Class Circle(Of T As {Class, New})
    Implements IShape

    Public Property Radius As Double = 1.0
    Public Event Drawn As EventHandler(Of EventArgs)
    Private ReadOnly mLayers As New Dictionary(Of String, List(Of T)) From {{"a", Nothing}}

    Public Sub New(radius As Double)
      Me.Radius = radius
    End Sub

    Public ReadOnly Property Area As Double Implements IShape.Area
      Get
        Return Math.PI * Radius ^ 2
      End Get
    End Property

    Public Sub Draw(canvas As Object) Implements IShape.Draw
      Dim doubled = Function(x As Integer)
                      Return x * 2
                    End Function
      Dim page = <circle r="5">
                   <end/>Sub</circle>
      RaiseEvent Drawn(Me, EventArgs.Empty)
#If TRACE Then
      Console.WriteLine($"{NameOf(Circle(Of T))}: {doubled(2)}")
#End If
    End Sub

    Public Shared Operator +(left As Circle(Of T),
                             right As Circle(Of T)) As Circle(Of T)
      Return New Circle(Of T)(left.Radius + right.Radius)
    End Operator
  End Class
End Namespace

Public Module Helpers
  <Runtime.CompilerServices.Extension>
  Public Function Twice(text As Words) As Words
    Return text & text
  End Function
  Public Async Function Wait() As Threading.Tasks.Task(Of Integer)
    Await Threading.Tasks.Task.Delay(1)
    Return 1
  End Function
  Friend Iterator Function Some() As IEnumerable(Of Integer)
    Yield 1
  End Function
End Module

Friend Enum Pen As Byte
  Thin
  Thick = &H10
End Enum
